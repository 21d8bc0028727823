#include "web/portal/Portal.h"

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"
#include "platform/http/HTTPNetwork.h"
#include "session/Account.h"
#include "ui/shell/Shell.h"

Portal::Portal(const Device &device, Account *account, Shell *shell,
    const DeploymentConfiguration &configuration)
    : linkHandOver(device.urlOpener, device.mainQueue, configuration.customerServiceAccount)
    , pageHost(shell, device.mainQueue, &linkHandOver, device.reachability, device.paths.downloads)
    , pageProfiles(device.paths.web, device.cookieStorage, device.defaults, device.mainQueue)
    , secondaryPages(shell->navigator(), &pageProfiles, &pageHost, device.mainQueue)
    , linkCodeSheet(shell)
    , shareSDK(device.urlOpener, device.photoLibrary, &linkCodeSheet, configuration.qq.shareUrl)
    , services(device, shell, &shareSDK, &secondaryPages)
    , slicingUpload(device, &account->session, shell)
    , pushRegistration(device.pushClient, configuration.push, &account->loginModel, device.defaults,
          device.notifications, &account->session)
{
    // Before a view of the portal looks for its profile anew: it connects later.
    connect(&account->session, &UserSession::userChanging, this, [this, device] {
        pageProfiles.renew();
        if (HTTPCache *pictures = device.network->cache())
            pictures->clear();
    });
}
