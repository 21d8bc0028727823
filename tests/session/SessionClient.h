#pragma once

#include "net/NetClient.h"
#include "platform/Device.h"
#include "platform/time/NotificationCenter.h"
#include "session/Account.h"
#include "support/ManualMainQueue.h"
#include "support/NotedUrlOpener.h"
#include "support/SwitchedReachability.h"
#include "support/TestProfile.h"

//! Everything up to the session, in a profile of its own: the device is the test's, its clock
//! stands still until it is advanced.
class SessionClient : public TestProfile
{
public:
    explicit SessionClient(const DeploymentConfiguration::Hosts &hosts)
        : account(device, hosts)
    {
    }

    //! Logs in with a password at the school, and stores school and token as a restart would find
    //! them. False when the platform refuses, or gives no token.
    bool rememberLogin(const QString &userCode, const QString &siteCode = u"school01"_qs)
    {
        account.requests.setOrganization(siteCode);
        const Answer answer = NetClient::await([&](ResponseCallback response) {
            account.requests.accountBindWechatWithUserCode(
                userCode, u"vant1234"_qs, {}, {}, {}, {}, {}, u""_qs, u""_qs, std::move(response));
        });
        account.ssoCookies.clearCookies();
        account.requests.setOrganization({});
        account.loginModel.setSiteCode(siteCode);
        account.loginModel.setLogin_token(answer.data[u"login_token"].toString());
        return !account.loginModel.login_token().isEmpty();
    }
    //! The names of the saved session cookies, sorted.
    QStringList savedCookieNames() const
    {
        QStringList names;
        for (const QVariant &cookie : defaults.objectForKey(u"vantCookies"_qs).toList())
            names << cookie.toMap().value(u"Name"_qs).toString();
        names.sort();
        return names;
    }
    //! Whether a call to the platform is on its way.
    bool isWaiting() const { return !account.requestManager.connectItems().empty(); }

    ManualMainQueue mainQueue;
    NotificationCenter notifications;
    SwitchedReachability reachability;
    NotedUrlOpener urlOpener;
    //! The parts above; no others.
    Device device {.paths = ProfilePaths(folder.path()),
        .mainQueue = &mainQueue,
        .notifications = &notifications,
        .keychain = &keychain,
        .defaults = &defaults,
        .cookieStorage = cookieStorage,
        .network = &network,
        .reachability = &reachability,
        .urlOpener = &urlOpener};
    Account account;
};
