#include "app/DelegateClient.h"

using namespace Qt::StringLiterals;

DelegateClient::DelegateClient(const DeploymentConfiguration &configuration)
    : configuration(configuration)
    , stage(configuration.hosts, &delegate)
    , pushClient({.broker = {},
                     .extraCaFile = {},
                     .storeFile = session.net.folder.filePath(u"push.ini"_s)},
          &mainQueue, &desktopNotifications, &badge)
    , pushRegistration(&pushClient, configuration.push, &session.net.loginModel,
          &session.net.defaults, &notifications, &session.session)
    , launch({
          .configuration = configuration,
          .shell = &shell,
          .defaults = &session.net.defaults,
          .requests = &session.net.requests,
          .network = &session.net.network,
          .mainQueue = &session.mainQueue,
          .notifications = &notifications,
          .session = &session.session,
          .urlOpener = &stage.urlOpener,
          .shareSDK = &shareSDK,
          .screenPixels = {},
          .openOutLinkPage = {},
          .terminate = {},
      })
    , delegate(
          {
              .configuration = configuration,
              .shell = &shell,
              .loginModel = &session.net.loginModel,
              .mainQueue = &session.mainQueue,
              .notifications = &notifications,
              .session = &session.session,
              .silentLogin = &session.silentLogin,
              .pushBinding = &session.binding,
              .pushRegistration = &pushRegistration,
              .locationManager = &locationManager,
              .shareSDK = &shareSDK,
              .wxApi = &stage.wxApi,
              .badge = &badge,
              .launch = &launch,
              .windowPixels = [] { return QSize(390, 844); },
              .requestGeometryUpdate = std::bind_front(&DelegateClient::turn, this),
          },
          {[this] { return makeLogin(); },
              [this] { return std::make_unique<STHomeViewController>(stage.environment()); }})
{
    // Without a window no view is made; the names must be known all the same.
    for (const auto &name : {u"LoginScreen"_s, u"HomeScreen"_s})
        shell.navigator()->registerScreen(name, QUrl(u"qrc:/none.qml"_s));
}

QString DelegateClient::turn(Qt::ScreenOrientation orientation)
{
    orientations << orientation;
    return orientationRefusal;
}

std::unique_ptr<SchoolLoginViewController> DelegateClient::makeLogin()
{
    return std::make_unique<LoginViewController2>(LoginEnvironment {
        .defaults = &session.net.defaults,
        .loginModel = &session.net.loginModel,
        .mainQueue = &session.mainQueue,
        .network = &session.net.network,
        .notifications = &notifications,
        .pushBinding = &session.binding,
        .reachability = &stage.reachability,
        .requests = &session.net.requests,
        .shell = &shell,
        .session = &session.session,
        .wxApi = &stage.wxApi,
        .displayName = configuration.app.displayName,
        .isPatriarch = false,
        .launchAdShowing = [this] { return launch.splashAd()->isShowing(); },
    });
}
