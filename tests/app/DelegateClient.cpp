#include "app/DelegateClient.h"

using namespace Qt::StringLiterals;

DelegateClient::DelegateClient(const DeploymentConfiguration &configuration)
    : stage(configuration)
    , launch(stage.device, &account, &shell, &stage.portal.shareSDK, configuration, {})
    , screens(stage.device, &account, &shell, &stage.portal, &launch, configuration)
    , delegate({
          .device = stage.device,
          .account = &account,
          .shell = &shell,
          .portal = &stage.portal,
          .launch = &launch,
          .configuration = configuration,
          .windowPixels = [] { return QSize(390, 844); },
          .requestGeometryUpdate = std::bind_front(&DelegateClient::turn, this),
          .makeLogin = [this] { return screens.makeLogin(); },
          .makeHome = [this] { return screens.makeHome(&delegate); },
      })
{
}

QString DelegateClient::turn(Qt::ScreenOrientation orientation)
{
    orientations << orientation;
    return orientationRefusal;
}
