#include "session/SessionClient.h"

using namespace Qt::StringLiterals;

namespace {

const QString password = QStringLiteral("vant1234");

}

SessionClient::SessionClient(const DeploymentConfiguration::Hosts &hosts)
    : net(hosts)
    , cookies(net.cookies, &net.defaults)
    , result(&net.loginModel, &net.defaults, &net.requests)
    , session(&net.loginModel, &net.defaults, net.cookies, &cookies, &result)
    , binding(&net.loginModel, &net.requests, &mainQueue, &session)
    , silentLogin(&net.loginModel, &net.requests, &session, &binding)
{
}

bool SessionClient::rememberLogin(const QString &userCode, const QString &siteCode)
{
    net.requests.setOrganization(siteCode);
    const Answer answer = NetClient::await([&](ResponseCallback response) {
        const QString none = u""_s;
        net.requests.accountBindWechatWithUserCode(
            userCode, password, {}, {}, {}, {}, {}, none, none, std::move(response));
    });
    const QString token = answer.data[u"login_token"].toString();
    cookies.clearCookies();
    net.requests.setOrganization({});
    net.loginModel.setSiteCode(siteCode);
    net.loginModel.setLogin_token(token);
    return !token.isEmpty();
}

QStringList SessionClient::savedCookieNames() const
{
    QStringList names;
    for (const QVariant &cookie : net.defaults.objectForKey(u"vantCookies"_s).toList())
        names << cookie.toMap().value(u"Name"_s).toString();
    names.sort();
    return names;
}
