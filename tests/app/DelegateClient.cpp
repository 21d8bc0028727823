#include "app/DelegateClient.h"

using namespace Qt::StringLiterals;

DelegateClient::DelegateClient(const DeploymentConfiguration &configuration)
    : configuration(configuration)
    , session(configuration.hosts)
    , album(session.net.folder.filePath(u"album"_s))
    , pushClient({.broker = {},
                     .extraCaFile = {},
                     .storeFile = session.net.folder.filePath(u"push.ini"_s)},
          &mainQueue, &desktopNotifications, &badge)
    , pushRegistration(&pushClient, configuration.push, &session.net.loginModel,
          &session.net.defaults, &notifications)
    , shell(session.mainQueue)
    , pageHost(&shell, session.net.folder.path())
    , slicingUpload({
          .network = &session.net.network,
          .reachability = &reachability,
          .photoLibrary = &album,
          .shell = &shell,
          .backGroundlogin =
              [this](const UploadEnvironment::LoggedIn &success) {
                  delegate.backGroundloginInWithRefresh(false, success);
              },
          .albumFolder = {},
          .libraryPath = session.net.folder.path(),
          .exportFolder = session.net.folder.filePath(u"exports"_s),
      })
    , profile(u"home"_s, session.net.folder.filePath(u"web"_s), u"VANT-IOS iphone"_s,
          session.net.cookies, WebCookieStore::Direction::Both)
    , launch({
          .configuration = configuration,
          .shell = &shell,
          .defaults = &session.net.defaults,
          .requests = &session.net.requests,
          .network = &session.net.network,
          .mainQueue = &session.mainQueue,
          .notifications = &notifications,
          .loginModel = &session.net.loginModel,
          .ssoCookies = &session.cookies,
          .urlOpener = &urlOpener,
          .shareSDK = &shareSDK,
          .screenPixels = {},
          .openOutLinkPage = {},
          .endSession = {},
          .terminate = {},
      })
    , delegate(
          {
              .configuration = configuration,
              .shell = &shell,
              .loginModel = &session.net.loginModel,
              .mainQueue = &session.mainQueue,
              .notifications = &notifications,
              .silentLogin = &session.silentLogin,
              .pushBinding = &session.binding,
              .pushRegistration = &pushRegistration,
              .locationManager = &locationManager,
              .shareSDK = &shareSDK,
              .wxApi = &wxApi,
              .badge = &badge,
              .launch = &launch,
              .windowPixels = [] { return QSize(390, 844); },
          },
          {[this] { return makeLogin(); }, [this] { return makeHome(); }})
{
    // Without a window no view is made; the names must be known all the same.
    for (const auto &name : {u"LoginScreen"_s, u"HomeScreen"_s})
        shell.navigator()->registerScreen(name, QUrl(u"qrc:/none.qml"_s));
}

std::unique_ptr<SchoolLoginViewController> DelegateClient::makeLogin()
{
    return std::make_unique<LoginViewController2>(LoginEnvironment {
        .loginModel = &session.net.loginModel,
        .loginResult = &session.result,
        .mainQueue = &session.mainQueue,
        .network = &session.net.network,
        .notifications = &notifications,
        .pushBinding = &session.binding,
        .reachability = &reachability,
        .requests = &session.net.requests,
        .shell = &shell,
        .ssoCookies = &session.cookies,
        .wxApi = &wxApi,
        .displayName = configuration.app.displayName,
        .isPatriarch = false,
        .launchAdShowing = [this] { return launch.splashAd()->isShowing(); },
    });
}

std::unique_ptr<STHomeViewController> DelegateClient::makeHome()
{
    return std::make_unique<STHomeViewController>(HomeEnvironment {
        .configuration = configuration,
        .delegate = &delegate,
        .profile = &profile,
        .loginModel = &session.net.loginModel,
        .defaults = &session.net.defaults,
        .deviceIdentifier = &session.net.student,
        .cookieStorage = session.net.cookies,
        .ssoCookies = &session.cookies,
        .notifications = &notifications,
        .mainQueue = &session.mainQueue,
        .reachability = &reachability,
        .network = &session.net.network,
        .urlOpener = &urlOpener,
        .photoLibrary = &album,
        .wxApi = &wxApi,
        .services = &pageServices,
        .pageHost = &pageHost,
        .slicingUpload = &slicingUpload,
        .shell = &shell,
    });
}
