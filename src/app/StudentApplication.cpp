#include "app/StudentApplication.h"

#include "login/LoginViewController2.h"
#include "ui/NavigationController.h"
#include "web/HomePageProfile.h"
#include "web/OMOutLinkViewController.h"
#include "web/STHomeViewController.h"
#include "web/WebPageProfile.h"

#include <QGuiApplication>
#include <QHostAddress>
#include <QNetworkDiskCache>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

const QString desktopFile = QStringLiteral("vant-student.desktop");
const QString studentBundle = QStringLiteral("cn.vant.student");
const QString patriarchBundle = QStringLiteral("cn.vant.patriarch");

bool isLoopback(const QString &host)
{
    const QUrl url(host);
    return url.host() == u"localhost" || QHostAddress(url.host()).isLoopback();
}

}

StudentApplication::StudentApplication(
    const DeploymentConfiguration &configuration, const ProfilePaths &paths)
    : m_configuration(configuration)
    , m_paths(paths)
    , m_defaults(paths.settings)
    , m_cookieStorage(paths.cookies)
    , m_reachability(isLoopback(configuration.hosts.rb))
    , m_photoLibrary(paths.album, {paths.videos})
    , m_keychain(paths.name, paths.keychainFallback)
    , m_badge(desktopFile)
    , m_loginModel(&m_defaults)
    , m_studentIdentifier(&m_keychain, studentBundle)
    , m_patriarchIdentifier(&m_keychain, patriarchBundle)
    , m_requestManager(&m_network, &m_loginModel, &m_defaults, configuration.hosts)
    , m_requests(&m_requestManager, &m_studentIdentifier, &m_patriarchIdentifier)
    , m_ssoCookies(&m_cookieStorage, &m_defaults)
    , m_loginResult(&m_loginModel, &m_defaults, &m_requests)
    , m_pushBinding(&m_loginModel, &m_requests, &m_mainQueue)
    , m_silentLogin(&m_loginModel, &m_requests, &m_ssoCookies, &m_loginResult, &m_pushBinding)
    , m_pushRegistration(
          &m_pushClient, configuration.push, &m_loginModel, &m_defaults, &m_notifications)
    , m_shell(m_mainQueue)
    , m_pageServices(m_shell.toast())
    , m_pageHost(&m_shell, paths.downloads)
    , m_slicingUpload({
          .network = &m_network,
          .reachability = &m_reachability,
          .photoLibrary = &m_photoLibrary,
          .shell = &m_shell,
          .backGroundlogin =
              [this](const UploadEnvironment::LoggedIn &success) {
                  m_delegate.backGroundloginInWithRefresh(false, success);
              },
          .albumFolder = paths.album,
          .libraryPath = paths.data,
          .exportFolder = paths.exports,
      })
    , m_delegate(
          {
              .configuration = configuration,
              .shell = &m_shell,
              .loginModel = &m_loginModel,
              .mainQueue = &m_mainQueue,
              .notifications = &m_notifications,
              .silentLogin = &m_silentLogin,
              .pushBinding = &m_pushBinding,
              .pushRegistration = &m_pushRegistration,
              .locationManager = &m_locationManager,
              .shareSDK = &m_shareSDK,
              .wxApi = &m_wxApi,
              .badge = &m_badge,
          },
          {[this] { return makeLogin(); }, [this] { return makeHome(); }})
{
    m_network.setCookieJar(&m_cookieStorage);
    // The network would take it over.
    m_cookieStorage.setParent(nullptr);
    auto *cache = new QNetworkDiskCache(&m_network);
    cache->setCacheDirectory(paths.cache);
    m_network.setCache(cache);
    registerScreens();
}

StudentApplication::~StudentApplication() = default;

void StudentApplication::registerScreens()
{
    Navigator *navigator = m_shell.navigator();
    navigator->registerScreen(u"LoginScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Login/LoginScreen.qml"_s));
    navigator->registerScreen(
        u"ChooseSchoolScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Login/ChooseSchoolScreen.qml"_s));
    navigator->registerScreen(u"HomeScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
    navigator->registerScreen(
        u"OutLinkScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Web/OutLinkScreen.qml"_s));
}

void StudentApplication::start(const std::optional<QVariantMap> &launchNotification)
{
    m_studentIdentifier.prepare();
    m_patriarchIdentifier.prepare();
    // Later versions of the toolkit look there by themselves.
    m_engine.addImportPath(u"qrc:/qt/qml"_s);
    m_engine.setInitialProperties({{u"shell"_s, QVariant::fromValue(&m_shell)},
        {u"title"_s, m_configuration.app.displayName}});
    m_engine.load(QUrl(u"qrc:/qt/qml/Vant/App/Main.qml"_s));
    if (m_engine.rootObjects().isEmpty())
        qFatal("the window could not be made");
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());

    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                m_delegate.applicationDidBecomeActive();
        });
    warmWebEngineWhenIdle();
    m_delegate.didFinishLaunchingWithOptions(launchNotification);
    m_window->show();
}

// Making the engine's profile and view takes the main thread for a while, which nobody notices
// after the first frame.
void StudentApplication::warmWebEngineWhenIdle()
{
    connect(
        m_window, &QQuickWindow::frameSwapped, this,
        [this] {
            m_shell.navigator()->prepare(u"HomeScreen"_s, m_delegate.homeNavViewController());
        },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

WebPageProfile *StudentApplication::homeProfile()
{
    if (!m_homeProfile)
        m_homeProfile = makeHomePageProfile(m_paths.web + u"/home"_s, &m_cookieStorage);
    return m_homeProfile.get();
}

std::unique_ptr<STHomeViewController> StudentApplication::makeHome()
{
    return std::make_unique<STHomeViewController>(HomeEnvironment {
        .configuration = m_configuration,
        .delegate = &m_delegate,
        .profile = homeProfile(),
        .loginModel = &m_loginModel,
        .defaults = &m_defaults,
        .deviceIdentifier = &m_studentIdentifier,
        .cookieStorage = &m_cookieStorage,
        .ssoCookies = &m_ssoCookies,
        .notifications = &m_notifications,
        .mainQueue = &m_mainQueue,
        .reachability = &m_reachability,
        .network = &m_network,
        .urlOpener = &m_urlOpener,
        .photoLibrary = &m_photoLibrary,
        .wxApi = &m_wxApi,
        .services = &m_pageServices,
        .pageHost = &m_pageHost,
        .slicingUpload = &m_slicingUpload,
        .shell = &m_shell,
    });
}

std::unique_ptr<LoginViewController2> StudentApplication::makeLogin()
{
    auto login = std::make_unique<LoginViewController2>(LoginEnvironment {
        .loginModel = &m_loginModel,
        .loginResult = &m_loginResult,
        .mainQueue = &m_mainQueue,
        .network = &m_network,
        .notifications = &m_notifications,
        .pushBinding = &m_pushBinding,
        .reachability = &m_reachability,
        .requests = &m_requests,
        .shell = &m_shell,
        .ssoCookies = &m_ssoCookies,
        .wxApi = &m_wxApi,
        .displayName = m_configuration.app.displayName,
        .isPatriarch = m_configuration.app.patriarch,
        .launchAdShowing = {},
    });
    connect(login.get(), &LoginViewController2::openOutLinkPage, this,
        &StudentApplication::openOutLinkPage);
    connect(login.get(), &LoginViewController2::jumpToAuthVC, this,
        [this] { m_shell.toast()->showError(u"账号绑定功能暂不可用"_s); });
    return login;
}

void StudentApplication::openOutLinkPage(const QString &urlStr, const QString &titleStr)
{
    if (!m_outLinkProfile)
        m_outLinkProfile = std::make_unique<WebPageProfile>(
            u"outlink"_s, m_paths.web + u"/outlink"_s, pageApplicationName, &m_cookieStorage);
    auto *page = new OMOutLinkViewController(m_outLinkProfile.get(), &m_pageHost);
    page->urlStr = urlStr;
    page->setTitle(titleStr);
    auto *bar = new NavigationController(m_shell.navigator(), u"OutLinkScreen"_s, page);
    page->setParent(bar);
    m_shell.navigator()->present(QString::fromLatin1(NavigationController::screenName), bar);
}

void StudentApplication::receivePush(const QVariantMap &userInfo)
{
    m_pushRegistration.didReceiveNotification(userInfo);
}

void StudentApplication::receiveUrl(const QUrl &url)
{
    if (!m_delegate.openURL(url))
        m_delegate.continueUserActivity(url);
}

void StudentApplication::activate()
{
    m_window->raise();
    m_window->requestActivate();
}
