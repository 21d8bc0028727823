#pragma once

#include "net/NetClient.h"
#include "session/LoginResult.h"
#include "session/PushBinding.h"
#include "session/SilentLogin.h"
#include "session/SsoCookies.h"
#include "session/UserSession.h"
#include "support/ManualMainQueue.h"

//! The session with everything below it, in a profile of its own; its clock stands still until it
//! is advanced.
class SessionClient
{
public:
    explicit SessionClient(const DeploymentConfiguration::Hosts &hosts);

    //! Logs in with a password at the school, and stores school and token as a restart would find
    //! them. False when the platform refuses, or gives no token.
    bool rememberLogin(
        const QString &userCode, const QString &siteCode = QStringLiteral("school01"));
    //! The names of the saved session cookies, sorted.
    QStringList savedCookieNames() const;
    //! Whether a call to the platform is on its way.
    bool isWaiting() const { return !net.manager.connectItems().empty(); }

    NetClient net;
    ManualMainQueue mainQueue;
    SsoCookies cookies;
    LoginResult result;
    UserSession session;
    PushBinding binding;
    SilentLogin silentLogin;
};
