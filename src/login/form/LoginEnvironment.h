#pragma once

#include "platform/Device.h"

#include <functional>

class Account;
class Shell;

//! What the login screens work with; nothing is owned, all must outlive them.
struct LoginEnvironment
{
    Device device;
    Account *account;
    Shell *shell;
    QString displayName; //!< the platform's name, the screen's title
    bool isPatriarch = false; //!< parent mode
    //! Whether a launch advertisement covers the screen; none: there is never one.
    std::function<bool()> launchAdShowing;
    //! Lays the notice about personal data over the screen until it has been accepted once; none:
    //! nobody asks.
    std::function<void()> showJurisdictionNotice = {};
};
