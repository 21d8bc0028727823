#pragma once

#include "login/LoginEnvironment.h"
#include "login/NotedWXApi.h"
#include "login/SwitchedReachability.h"
#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/BaseRequestManager.h"
#include "net/RequestInterface.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/NotificationCenter.h"
#include "session/LoginResult.h"
#include "session/PushBinding.h"
#include "session/SsoCookies.h"
#include "support/ManualMainQueue.h"
#include "support/SandboxProcess.h"
#include "ui/Shell.h"

#include <QNetworkAccessManager>
#include <QTemporaryDir>

//! All that a login screen works with, in a profile of its own, against a real school platform.
//! Time is the test's.
class LoginHarness
{
public:
    //! The platform's accounts all have this password.
    static constexpr auto password = "vant1234";
    //! The platform's show schools.
    static constexpr auto school = "school01";
    static constexpr auto localSchool = "长乐数智学校（本地部署）";

    explicit LoginHarness(SandboxProcess &sandbox);

    LoginEnvironment environment();
    //! The operations the platform was asked for since the last call.
    QStringList askedFor();
    //! The text of the toast, null when there is none.
    QString toast();

    SandboxProcess &sandbox;
    QTemporaryDir folder;
    ManualMainQueue mainQueue;
    NotificationCenter notifications;
    SwitchedReachability reachability;
    NotedWXApi wxApi;
    UserDefaults defaults;
    LoginModel loginModel;
    QNetworkAccessManager network;
    HTTPCookieStorage *cookies; //!< the network's
    KeyChainStore keychain;
    DeviceIdentifier student;
    DeviceIdentifier patriarch;
    BaseRequestManager manager;
    RequestInterface requests;
    SsoCookies ssoCookies;
    LoginResult loginResult;
    PushBinding pushBinding;
    Shell shell;
    bool launchAdShowing = false;
};
