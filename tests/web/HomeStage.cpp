#include "web/HomeStage.h"

using namespace Qt::StringLiterals;

namespace {

Device completed(HomeStage &stage)
{
    Device device = stage.session.device;
    device.photoLibrary = &stage.album;
    device.wxApi = &stage.wxApi;
    device.locationManager = &stage.locationManager;
    device.badge = &stage.badge;
    device.pushClient = &stage.pushClient;
    device.pageNotifications = &stage.pageNotifications;
    return device;
}

}

HomeStage::HomeStage(const DeploymentConfiguration &configuration)
    : configuration(configuration)
    , session(configuration.hosts)
    , album(session.device.paths.album)
    , pushClient(
          {.broker = {}, .extraCaFile = {}, .storeFile = session.folder.filePath(u"push.ini"_s)},
          &mainQueue, &desktopNotifications, &badge)
    , device(completed(*this))
    , portal(device, &account, &shell, configuration)
{
}

HomeEnvironment HomeStage::environment(STHomeViewControllerDelegate *delegate)
{
    return {.device = device,
        .account = &account,
        .shell = &shell,
        .portal = &portal,
        .services = &services,
        .delegate = delegate,
        .configuration = configuration};
}
