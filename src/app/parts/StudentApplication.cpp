#include "app/parts/StudentApplication.h"

#include "app/start/RunningInstance.h"
#include "login/screen/SchoolLoginViewController.h"
#include "ui/navigation/NavigationController.h"
#include "web/home/STHomeViewController.h"

#include <QGuiApplication>

StudentApplication::StudentApplication(const DeploymentConfiguration &configuration,
    const ProfilePaths &paths, const QString &cameraFeed)
    : m_title(configuration.app.displayName)
    , m_systemDevice(configuration, paths, cameraFeed)
    , m_device(m_systemDevice.device())
    , m_account(m_device, configuration.hosts)
    , m_window(*m_device.mainQueue)
    , m_portal(m_device, &m_account, m_window.shell(), configuration)
    , m_launch(m_device, &m_account, m_window.shell(), &m_portal.shareSDK, configuration,
          Window::screenPixels())
    , m_screens(m_device, &m_account, m_window.shell(), &m_portal, &m_launch, configuration)
    , m_delegate({
          .device = m_device,
          .account = &m_account,
          .shell = m_window.shell(),
          .portal = &m_portal,
          .launch = &m_launch,
          .configuration = configuration,
          .windowPixels = &Window::windowPixels,
          .requestGeometryUpdate = [this](auto orientation) { return m_window.turn(orientation); },
          .makeLogin = [this] { return m_screens.makeLogin(); },
          .makeHome = [this] { return m_screens.makeHome(&m_delegate); },
      })
    , m_inputPause(m_device.mainQueue)
{
    connect(&m_launch, &LaunchStage::openOutLinkPage, &m_portal.secondaryPages,
        &SecondaryPages::openOutLinkPage);
    connect(m_device.pushClient, &PushClient::didReceiveNotification, this,
        [this] { m_window.activate(); });
    connect(&m_portal.pageNotifications, &PageNotifications::activated, this,
        [this] { m_window.activate(); });
}

StudentApplication::~StudentApplication()
{
    m_window.close();
}

void StudentApplication::start(const std::optional<QVariantMap> &launchNotification)
{
    m_account.prepareIdentifiers();
    // What these ask the platform is answered while the window is made.
    m_launch.splashAd()->setupXHLaunchAd();
    m_delegate.didFinishLaunchingWithOptions(launchNotification);
    QQuickWindow *window = m_window.make(m_title, m_launch.splashAd()->launchAd());
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                m_delegate.applicationDidBecomeActive();
        });
    prepareHomeInPause();
    window->show();
}

// Who signs in shall find the web engine running, and who types shall not wait for it to start.
void StudentApplication::prepareHomeInPause()
{
    connect(
        window(), &QQuickWindow::frameSwapped, this,
        [this] { m_inputPause.await([this] { m_delegate.prepareHome(); }); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void StudentApplication::listenTo(RunningInstance *instance)
{
    connect(instance, &RunningInstance::pushReceived, &m_portal.pushRegistration,
        &PushRegistration::didReceiveNotification);
    connect(instance, &RunningInstance::urlReceived, this, &StudentApplication::receiveUrl);
    connect(instance, &RunningInstance::activated, this, [this] { m_window.activate(); });
    instance->answer();
}

void StudentApplication::receiveUrl(const QUrl &url)
{
    if (!m_delegate.openURL(url))
        m_delegate.continueUserActivity(url);
}
