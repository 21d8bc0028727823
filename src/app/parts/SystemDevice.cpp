#include "app/parts/SystemDevice.h"

#include "model/SecretSettings.h"
#include "platform/media/FeedCaptureDevice.h"
#include "platform/media/SystemCaptureDevice.h"
#include "platform/transport/ServerAddress.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

const QString desktopEntry = QStringLiteral("vant-student");

QString clientProgram()
{
    return QCoreApplication::applicationDirPath() + u"/vant-student"_s;
}

std::unique_ptr<CaptureDevice> makeCamera(
    const QString &feed, UserDefaults *defaults, MainQueue &queue)
{
    if (feed.isNull())
        return std::make_unique<SystemCaptureDevice>(defaults);
    return std::make_unique<FeedCaptureDevice>(feed, queue);
}

}

SystemDevice::SystemDevice(const DeploymentConfiguration &configuration, const ProfilePaths &paths,
    const QString &cameraFeed)
    : m_paths(paths)
    , m_keychain(paths.name, paths.keychainFallback)
    , m_defaults(paths.settings, &m_keychain, secretSettings)
    , m_cookieStorage(paths.cookies)
    , m_network(&m_cookieStorage, paths.cache)
    , m_reachability(ServerAddress::isLoopback(QUrl(configuration.hosts.rb)))
    , m_photoLibrary(paths.album, {paths.videos})
    , m_camera(makeCamera(cameraFeed, &m_defaults, m_mainQueue))
    , m_locationManager(&m_mainQueue, &m_network, configuration.location.regeocodeUrl)
    , m_badge(desktopEntry + u".desktop"_s)
    , m_desktopNotifications(configuration.app.displayName, desktopEntry)
    , m_pageNotifications(configuration.app.displayName, desktopEntry)
    , m_pushClient({.broker = configuration.push.broker,
                       .extraCaFile = configuration.extraCaFile,
                       .storeFile = paths.data + u"/push.ini"_s},
          &m_mainQueue, &m_desktopNotifications, &m_badge)
    , m_callbacks(clientProgram(),
          paths.name.isEmpty() ? QStringList() : QStringList {u"--profile"_s, paths.name})
    , m_wxApi(&m_urlOpener, &m_callbacks, &m_defaults, configuration.wechat.authoriseUrl)
{
}

Device SystemDevice::device()
{
    return {.paths = m_paths,
        .mainQueue = &m_mainQueue,
        .notifications = &m_notifications,
        .keychain = &m_keychain,
        .defaults = &m_defaults,
        .cookieStorage = &m_cookieStorage,
        .network = &m_network,
        .reachability = &m_reachability,
        .urlOpener = &m_urlOpener,
        .badge = &m_badge,
        .photoLibrary = &m_photoLibrary,
        .camera = m_camera.get(),
        .locationManager = &m_locationManager,
        .wxApi = &m_wxApi,
        .pushClient = &m_pushClient,
        .pageNotifications = &m_pageNotifications};
}
