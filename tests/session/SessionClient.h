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
    explicit SessionClient(const DeploymentConfiguration::Hosts &hosts)
        : net(hosts)
    {
    }

    //! Logs in with a password at the school, and stores school and token as a restart would find
    //! them. False when the platform refuses, or gives no token.
    bool rememberLogin(const QString &userCode, const QString &siteCode = u"school01"_qs)
    {
        net.requests.setOrganization(siteCode);
        const Answer answer = NetClient::await([&](ResponseCallback response) {
            net.requests.accountBindWechatWithUserCode(
                userCode, u"vant1234"_qs, {}, {}, {}, {}, {}, u""_qs, u""_qs, std::move(response));
        });
        cookies.clearStorage();
        net.requests.setOrganization({});
        net.loginModel.setSiteCode(siteCode);
        net.loginModel.setLogin_token(answer.data[u"login_token"].toString());
        return !net.loginModel.login_token().isEmpty();
    }
    //! The names of the saved session cookies, sorted.
    QStringList savedCookieNames() const
    {
        QStringList names;
        for (const QVariant &cookie : net.defaults.objectForKey(u"vantCookies"_qs).toList())
            names << cookie.toMap().value(u"Name"_qs).toString();
        names.sort();
        return names;
    }
    //! Whether a call to the platform is on its way.
    bool isWaiting() const { return !net.manager.connectItems().empty(); }

    NetClient net;
    ManualMainQueue mainQueue;
    SsoCookies cookies {net.cookies, &net.defaults};
    LoginResult result {&net.loginModel, &net.defaults, &net.requests};
    UserSession session {&net.loginModel, &net.defaults, net.cookies, &cookies, &result};
    PushBinding binding {&net.loginModel, &net.requests, &mainQueue, &session};
    SilentLogin silentLogin {&net.loginModel, &net.requests, &session, &binding};
};
