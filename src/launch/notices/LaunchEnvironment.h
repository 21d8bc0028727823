#pragma once

#include <QString>

#include <functional>

class PrivacyConsent;
class RequestInterface;
class Shell;
class UserDefaults;

//! What notices and guide work with; nothing is owned, all must outlive them.
struct LaunchEnvironment
{
    Shell *shell;
    UserDefaults *defaults;
    RequestInterface *requests;
    PrivacyConsent *consent;
    QString displayName; //!< the platform's name
    QString contentHost; //!< with the privacy agreement's page; ends with "/"
    //! Opens a page of the network under a bar with this title, over what is shown.
    std::function<void(const QString &url, const QString &title)> openOutLinkPage;
};
