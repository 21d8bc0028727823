#include "session/SessionClient.h"

#include "net/NetClient.h"

using namespace Qt::StringLiterals;

namespace {

const QString password = QStringLiteral("vant1234");

}

SessionClient::SessionClient(const DeploymentConfiguration::Hosts &hosts)
    : device {.paths = {},
        .mainQueue = &mainQueue,
        .notifications = &notifications,
        .keychain = &keychain,
        .defaults = &defaults,
        .cookieStorage = cookieStorage,
        .network = &network,
        .reachability = &reachability,
        .urlOpener = &urlOpener}
    , account(device, hosts)
{
    device.paths.data = folder.path();
    device.paths.web = folder.filePath(u"web"_s);
    device.paths.exports = folder.filePath(u"exports"_s);
    device.paths.downloads = folder.filePath(u"downloads"_s);
    device.paths.album = folder.filePath(u"album"_s);
}

bool SessionClient::rememberLogin(const QString &userCode, const QString &siteCode)
{
    account.requests.setOrganization(siteCode);
    const Answer answer = NetClient::await([&](ResponseCallback response) {
        const QString none = u""_s;
        account.requests.accountBindWechatWithUserCode(
            userCode, password, {}, {}, {}, {}, {}, none, none, std::move(response));
    });
    const QString token = answer.data[u"login_token"].toString();
    account.ssoCookies.clearCookies();
    account.requests.setOrganization({});
    account.loginModel.setSiteCode(siteCode);
    account.loginModel.setLogin_token(token);
    return !token.isEmpty();
}

QStringList SessionClient::savedCookieNames() const
{
    QStringList names;
    for (const QVariant &cookie : defaults.objectForKey(u"vantCookies"_s).toList())
        names << cookie.toMap().value(u"Name"_s).toString();
    names.sort();
    return names;
}
