#pragma once

#include "login/form/LoginEnvironment.h"
#include "session/SessionClient.h"
#include "support/PlatformProcess.h"
#include "ui/shell/Shell.h"

//! All that a login screen works with, in a profile of its own, against a real school platform.
//! Time is the test's.
class LoginHarness
{
public:
    explicit LoginHarness(PlatformProcess &sandbox);

    LoginEnvironment environment();
    //! Waits until nothing is under way any more.
    bool callsEnd();
    //! The operations the platform was asked for since the last question; pictures are none.
    QList<TracedRequest> calls();
    QStringList askedFor();
    //! The text of the toast, null when there is none.
    QString toast();

    PlatformProcess &sandbox;
    SessionClient session;
    ManualMainQueue &mainQueue {session.mainQueue};
    LoginModel &loginModel {session.account.loginModel};
    UserDefaults &defaults {session.defaults};
    HTTPNetwork &network {session.network};
    BaseRequestManager &manager {session.account.requestManager};
    RequestInterface &requests {session.account.requests};
    NotificationCenter &notifications {session.notifications};
    SwitchedReachability &reachability {session.reachability};
    Shell shell {session.mainQueue};
};
