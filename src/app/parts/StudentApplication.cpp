#include "app/parts/StudentApplication.h"

#include "app/start/RunningInstance.h"
#include "login/region/LoginViewController.h"
#include "login/school/LoginViewController2.h"
#include "model/SecretSettings.h"
#include "platform/desktop/WindowOrientation.h"
#include "platform/http/ServerAddress.h"
#include "platform/media/FeedCaptureDevice.h"
#include "platform/media/SystemCaptureDevice.h"
#include "ui/navigation/NavigationController.h"
#include "ui/theme/FontChooser.h"
#include "upload/picker/ImagePickerController.h"
#include "web/home/BridgeHandlers.h"
#include "web/home/STHomeViewController.h"

#include <QGuiApplication>
#include <QNetworkDiskCache>
#include <QScreen>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

//! Of the window on a desktop, in points.
constexpr QSize windowSize {390, 844};
const QString desktopEntry = QStringLiteral("vant-student");
const QString studentBundle = QStringLiteral("cn.vant.student");
const QString patriarchBundle = QStringLiteral("cn.vant.patriarch");

QString clientProgram()
{
    return QCoreApplication::applicationDirPath() + u"/vant-student"_s;
}

QSize portraitPixels(const QScreen &screen)
{
    const QSize pixels = screen.size() * screen.devicePixelRatio();
    return pixels.width() > pixels.height() ? pixels.transposed() : pixels;
}

std::unique_ptr<CaptureDevice> makeCamera(
    const QString &feed, UserDefaults *defaults, MainQueue &queue)
{
    if (feed.isNull())
        return std::make_unique<SystemCaptureDevice>(defaults);
    return std::make_unique<FeedCaptureDevice>(feed, queue);
}

}

StudentApplication::StudentApplication(const DeploymentConfiguration &configuration,
    const ProfilePaths &paths, const QString &cameraFeed)
    : m_configuration(configuration)
    , m_paths(paths)
    , m_keychain(paths.name, paths.keychainFallback)
    , m_defaults(paths.settings, &m_keychain, secretSettings)
    , m_cookieStorage(paths.cookies)
    , m_reachability(ServerAddress::isLoopback(QUrl(configuration.hosts.rb)))
    , m_photoLibrary(paths.album, {paths.videos})
    , m_badge(desktopEntry + u".desktop"_s)
    , m_desktopNotifications(configuration.app.displayName, desktopEntry)
    , m_pushClient({.broker = configuration.push.broker,
                       .extraCaFile = configuration.extraCaFile,
                       .storeFile = paths.data + u"/push.ini"_s},
          &m_mainQueue, &m_desktopNotifications, &m_badge)
    , m_callbacks(clientProgram(),
          paths.name.isEmpty() ? QStringList() : QStringList {u"--profile"_s, paths.name})
    , m_wxApi(&m_urlOpener, &m_callbacks, &m_defaults, configuration.wechat.authoriseUrl)
    , m_locationManager(&m_mainQueue, &m_network, configuration.location.regeocodeUrl)
    , m_camera(makeCamera(cameraFeed, &m_defaults, m_mainQueue))
    , m_loginModel(&m_defaults)
    , m_studentIdentifier(&m_keychain, studentBundle)
    , m_patriarchIdentifier(&m_keychain, patriarchBundle)
    , m_requestManager(&m_network, &m_loginModel, &m_defaults, configuration.hosts)
    , m_requests(&m_requestManager, &m_studentIdentifier, &m_patriarchIdentifier)
    , m_ssoCookies(&m_cookieStorage, &m_defaults)
    , m_loginResult(&m_loginModel, &m_defaults, &m_requests)
    , m_session(&m_loginModel, &m_defaults, &m_cookieStorage, &m_ssoCookies, &m_loginResult)
    , m_pushBinding(&m_loginModel, &m_requests, &m_mainQueue, &m_session)
    , m_silentLogin(&m_loginModel, &m_requests, &m_session, &m_pushBinding)
    , m_pushRegistration(&m_pushClient, configuration.push, &m_loginModel, &m_defaults,
          &m_notifications, &m_session)
    , m_shell(m_mainQueue)
    , m_linkHandOver(&m_urlOpener, &m_mainQueue, configuration.customerServiceAccount)
    , m_pageHost(&m_shell, &m_mainQueue, &m_linkHandOver, paths.downloads)
    , m_pageProfiles(paths.web, &m_cookieStorage, &m_defaults, &m_mainQueue)
    , m_linkCodeSheet(&m_shell)
    , m_shareSDK(&m_urlOpener, &m_photoLibrary, &m_linkCodeSheet, configuration.qq.shareUrl)
    , m_secondaryPages(m_shell.navigator(), &m_pageProfiles, &m_pageHost, &m_mainQueue,
          [this](bool landscape) { m_delegate.setLandscapeScreen(landscape); })
    , m_pageServices(
          {.shell = &m_shell,
              .camera = m_camera.get(),
              .chooseFromAlbum
              = [this](const ScanEnvironment::AlbumAnswer &answer) { chooseFromAlbum(answer); }},
          &m_locationManager, &m_shareSDK, &m_network, &m_secondaryPages)
    , m_slicingUpload({
          .network = &m_network,
          .reachability = &m_reachability,
          .photoLibrary = &m_photoLibrary,
          .shell = &m_shell,
          .session = &m_session,
          .backGroundlogin =
              [this](const UploadEnvironment::LoggedIn &success) {
                  m_delegate.backGroundloginInWithRefresh(false, success);
              },
          .albumFolder = paths.album,
          .libraryPath = paths.data,
          .exportFolder = paths.exports,
      })
    , m_launch({
          .configuration = configuration,
          .shell = &m_shell,
          .defaults = &m_defaults,
          .requests = &m_requests,
          .network = &m_network,
          .mainQueue = &m_mainQueue,
          .notifications = &m_notifications,
          .session = &m_session,
          .urlOpener = &m_urlOpener,
          .shareSDK = &m_shareSDK,
          .screenPixels = portraitPixels(*qGuiApp->primaryScreen()),
          .openOutLinkPage
          = [this](const QString &url,
                const QString &title) { m_secondaryPages.openOutLinkPage(url, title); },
          .terminate = [] { ::_exit(EXIT_SUCCESS); },
      })
    , m_delegate(
          {
              .configuration = configuration,
              .shell = &m_shell,
              .loginModel = &m_loginModel,
              .mainQueue = &m_mainQueue,
              .notifications = &m_notifications,
              .session = &m_session,
              .silentLogin = &m_silentLogin,
              .pushBinding = &m_pushBinding,
              .pushRegistration = &m_pushRegistration,
              .locationManager = &m_locationManager,
              .shareSDK = &m_shareSDK,
              .wxApi = &m_wxApi,
              .badge = &m_badge,
              .launch = &m_launch,
              .windowPixels = [this] { return windowPixels(); },
              .requestGeometryUpdate = [this](auto orientation) { return turnWindow(orientation); },
          },
          {[this] { return makeLogin(); }, [this] { return makeHome(); }})
    , m_inputPause(&m_mainQueue)
{
    m_network.setCookieJar(&m_cookieStorage);
    // The network would take it over.
    m_cookieStorage.setParent(nullptr);
    auto *cache = new QNetworkDiskCache(&m_network);
    cache->setCacheDirectory(paths.cache);
    m_network.setCache(cache);
    connect(&m_session, &UserSession::userChanging, this, &StudentApplication::forgetFormerUser);
    connect(
        &m_pushClient, &PushClient::didReceiveNotification, this, &StudentApplication::activate);
    registerScreens();
}

StudentApplication::~StudentApplication() = default;

void StudentApplication::registerScreens()
{
    Navigator *navigator = m_shell.navigator();
    for (const QString &screen : {u"LoginScreen"_s, u"RegionLoginScreen"_s, u"ChooseSchoolScreen"_s,
             u"AuthLoginScreen"_s, u"ActivateScreen"_s, u"SetingAccountScreen"_s})
        navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
    navigator->registerScreen(u"HomeScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
}

void StudentApplication::start(const std::optional<QVariantMap> &launchNotification)
{
    m_studentIdentifier.prepare();
    m_patriarchIdentifier.prepare();
    // What these ask the platform is answered while the window is made.
    m_launch.splashAd()->setupXHLaunchAd();
    m_delegate.didFinishLaunchingWithOptions(launchNotification);
    FontChooser::apply();
    // Later versions of the toolkit look there by themselves.
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
    m_engine.setInitialProperties(
        {{u"shell"_s, QVariant::fromValue(&m_shell)}, {u"title"_s, m_configuration.app.displayName},
            {u"width"_s, windowSize.width()}, {u"height"_s, windowSize.height()},
            {u"launchAd"_s, QVariant::fromValue(m_launch.splashAd()->launchAd())}});
    m_engine.load(QUrl(u"qrc:/qt/qml/Vant/App/Main.qml"_s));
    if (m_engine.rootObjects().isEmpty())
        qFatal("the window could not be made");
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());

    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                m_delegate.applicationDidBecomeActive();
        });
    prepareHomeInPause();
    m_window->show();
}

// A phone's window takes the whole screen as soon as it is shown.
QSize StudentApplication::windowPixels() const
{
    const QScreen *screen = qGuiApp->primaryScreen();
    const bool isPhone = screen->size().height() > screen->size().width();
    return (isPhone ? screen->size() : windowSize) * screen->devicePixelRatio();
}

QString StudentApplication::turnWindow(Qt::ScreenOrientation orientation)
{
    return m_window ? WindowOrientation::request(m_window, orientation) : QString();
}

// Who signs in shall find the web engine running, and who types shall not wait for it to start.
void StudentApplication::prepareHomeInPause()
{
    connect(
        m_window, &QQuickWindow::frameSwapped, this,
        [this] { m_inputPause.await([this] { m_delegate.prepareHome(); }); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void StudentApplication::forgetFormerUser()
{
    m_pageProfiles.renew();
    m_network.cache()->clear();
}

std::unique_ptr<STHomeViewController> StudentApplication::makeHome()
{
    auto home = std::make_unique<STHomeViewController>(HomeEnvironment {
        .configuration = m_configuration,
        .delegate = &m_delegate,
        .profiles = &m_pageProfiles,
        .loginModel = &m_loginModel,
        .defaults = &m_defaults,
        .session = &m_session,
        .deviceIdentifier = &m_studentIdentifier,
        .cookieStorage = &m_cookieStorage,
        .ssoCookies = &m_ssoCookies,
        .notifications = &m_notifications,
        .mainQueue = &m_mainQueue,
        .reachability = &m_reachability,
        .network = &m_network,
        .photoLibrary = &m_photoLibrary,
        .wxApi = &m_wxApi,
        .services = &m_pageServices,
        .pageHost = &m_pageHost,
        .slicingUpload = &m_slicingUpload,
        .shell = &m_shell,
    });
    BridgeHandlers::registerAll(home->bridge(), home.get());
    return home;
}

std::unique_ptr<SchoolLoginViewController> StudentApplication::makeLogin()
{
    const LoginEnvironment environment {
        .defaults = &m_defaults,
        .loginModel = &m_loginModel,
        .mainQueue = &m_mainQueue,
        .network = &m_network,
        .notifications = &m_notifications,
        .pushBinding = &m_pushBinding,
        .reachability = &m_reachability,
        .requests = &m_requests,
        .shell = &m_shell,
        .session = &m_session,
        .wxApi = &m_wxApi,
        .displayName = m_configuration.app.displayName,
        .isPatriarch = m_configuration.app.patriarch,
        .launchAdShowing = [this] { return m_launch.splashAd()->isShowing(); },
        .showJurisdictionNotice = [this] { m_launch.showJurisdictionNotice(); },
    };
    std::unique_ptr<SchoolLoginViewController> login;
    if (m_configuration.app.loginScreen == u"older")
        login = std::make_unique<LoginViewController>(environment);
    else
        login = std::make_unique<LoginViewController2>(environment);
    connect(login.get(), &LoginFormViewController::openOutLinkPage, this,
        [this](const QString &url, const QString &title) {
            m_secondaryPages.openOutLinkPage(url, title);
        });
    return login;
}

void StudentApplication::chooseFromAlbum(const ScanEnvironment::AlbumAnswer &answer)
{
    ImagePickerController::present(&m_shell, &m_photoLibrary, {}, {},
        [answer](const std::optional<QList<PhotoAsset>> &picked) {
            answer(picked && !picked->isEmpty() ? std::optional(picked->first().filePath)
                                                : std::nullopt);
        });
}

void StudentApplication::listenTo(RunningInstance *instance)
{
    connect(instance, &RunningInstance::pushReceived, &m_pushRegistration,
        &PushRegistration::didReceiveNotification);
    connect(instance, &RunningInstance::urlReceived, this, &StudentApplication::receiveUrl);
    connect(instance, &RunningInstance::activated, this, &StudentApplication::activate);
    instance->answer();
}

void StudentApplication::receiveUrl(const QUrl &url)
{
    if (!m_delegate.openURL(url))
        m_delegate.continueUserActivity(url);
}

void StudentApplication::activate()
{
    if (!m_window)
        return;
    m_window->raise();
    m_window->requestActivate();
}
