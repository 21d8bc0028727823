#include "web/portal/Portal.h"

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"
#include "platform/http/HTTPNetwork.h"
#include "session/Account.h"
#include "ui/shell/Shell.h"
#include "web/bridge/BridgeTrust.h"

#include <QQuickWebEngineProfile>

namespace {

LinkHandOver::IsForeign foreignPages(const DeploymentConfiguration &configuration)
{
    if (configuration.foreignPages != u"browser" || configuration.trustedOrigins.isEmpty())
        return [](const QUrl &) { return false; };
    return [own = BridgeTrust(configuration.trustedOrigins)](
               const QUrl &page) { return !own.serves(page.toString(QUrl::FullyEncoded), page); };
}

}

Portal::Portal(const Device &device, Account *account, Shell *shell,
    const DeploymentConfiguration &configuration)
    : linkHandOver(device.urlOpener, device.mainQueue, configuration.customerServiceAccount,
        foreignPages(configuration))
    , pagePermissions(
          device.defaults, [session = &account->session] { return session->isActive(); })
    , pageNotifications(device.pageNotifications, &pagePermissions)
    , pageHost(shell, device.mainQueue, &linkHandOver, device.reachability, device.paths.downloads,
          &pagePermissions)
    , pageProfiles(device.paths.web, device.cookieStorage, device.defaults, device.mainQueue)
    , secondaryPages(shell->navigator(), &pageProfiles, &pageHost, device.mainQueue)
    , linkCodeSheet(shell)
    , shareSDK(device.urlOpener, device.photoLibrary, &linkCodeSheet, configuration.qq.shareUrl)
    , services(device, shell, &shareSDK, &secondaryPages)
    , slicingUpload(device, &account->session, shell)
    , pushRegistration(device.pushClient, configuration.push, &account->loginModel, device.defaults,
          device.notifications, &account->session)
{
    connect(&pageProfiles, &PageProfiles::made, &pageNotifications, &PageNotifications::listenTo);
    connect(&account->session, &UserSession::ending, &pageNotifications,
        &PageNotifications::withdrawAll);
    // Before a view of the portal looks for its profile anew: it connects later.
    connect(&account->session, &UserSession::userChanging, this, [this, device] {
        pageProfiles.renew();
        pagePermissions.clear();
        if (HTTPCache *pictures = device.network->cache())
            pictures->clear();
    });
}
