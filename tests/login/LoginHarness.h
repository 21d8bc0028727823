#pragma once

#include "login/LoginEnvironment.h"
#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/BaseRequestManager.h"
#include "net/RequestInterface.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/NotificationCenter.h"
#include "platform/WXApi.h"
#include "session/LoginResult.h"
#include "session/PushBinding.h"
#include "session/SsoCookies.h"
#include "support/ManualMainQueue.h"
#include "support/PlatformProcess.h"
#include "support/SwitchedReachability.h"
#include "ui/Shell.h"

#include <QNetworkAccessManager>
#include <QTemporaryDir>

//! Notes what was asked of WeChat; the answer is the test's.
class NotedWXApi : public WXApi
{
public:
    bool registerApp(const QString &, const QString &) override { return true; }
    bool sendAuthReq(const QString &scope, const QString &state) override
    {
        asked << scope + u' ' + state;
        return true;
    }
    bool handleOpenURL(const QUrl &) override { return false; }
    bool handleOpenUniversalLink(const QUrl &) override { return false; }

    QStringList asked;
};

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
