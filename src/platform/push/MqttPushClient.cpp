#include "platform/push/MqttPushClient.h"

#include "platform/Logging.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/time/MainQueue.h"

#include <QGuiApplication>
#include <QUrl>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto firstDelay = 1s;
constexpr std::chrono::seconds longestDelay = 5min;
constexpr int plainPort = 1883;
constexpr int encryptedPort = 8883;

}

MqttPushClient::MqttPushClient(const Settings &settings, MainQueue *mainQueue,
    DesktopNotifications *notifications, ApplicationBadge *badge)
    : m_settings(settings)
    , m_mainQueue(mainQueue)
    , m_notifications(notifications)
    , m_badge(badge)
    , m_store(settings.storeFile)
    , m_delay(firstDelay)
{
    connect(
        notifications, &DesktopNotifications::activated, this, &PushClient::didReceiveNotification);
    connect(notifications, &DesktopNotifications::unavailable, this,
        &PushClient::willPresentNotification);
}

MqttPushClient::~MqttPushClient() = default;

void MqttPushClient::startSdk(const QString &appId, const QString &appKey, const QString &appSecret)
{
    const QUrl broker(m_settings.broker, QUrl::StrictMode);
    const bool encrypted = broker.scheme() == u"mqtts";
    if (broker.host().isEmpty() || (!encrypted && broker.scheme() != u"mqtt")) {
        const QString error = m_settings.broker.isEmpty()
            ? u"push is not available"_s
            : u"\"%1\" is no address of a push broker"_s.arg(m_settings.broker);
        QMetaObject::invokeMethod(
            this, [this, error] { Q_EMIT didOccurError(error); }, Qt::QueuedConnection);
        return;
    }
    const QString clientId = m_store.clientId();
    m_access = {
        .host = broker.host(),
        .port = broker.port(encrypted ? encryptedPort : plainPort),
        .encrypted = encrypted,
        .extraCaFile = m_settings.extraCaFile,
        .clientId = clientId,
        .userName = appKey,
        .password = appSecret,
        .topic = u"push/%1/%2"_s.arg(appId, clientId),
    };
    m_delay = firstDelay;
    m_outcomeIsDue = true;
    if (!m_connection) {
        connectToBroker();
    } else if (m_isSubscribed) {
        // Already there; otherwise the attempt under way will tell.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_isSubscribed && m_outcomeIsDue)
                    onSubscribed();
            },
            Qt::QueuedConnection);
    }
}

void MqttPushClient::connectToBroker()
{
    m_retry.reset();
    m_isSubscribed = false;
    m_connection = std::make_unique<MqttConnection>(m_access, PushMessage::mostBytes);
    connect(m_connection.get(), &MqttConnection::subscribed, this, &MqttPushClient::onSubscribed);
    connect(m_connection.get(), &MqttConnection::message, this, &MqttPushClient::onMessage);
    connect(m_connection.get(), &MqttConnection::ended, this, &MqttPushClient::onEnded);
}

void MqttPushClient::onSubscribed()
{
    m_isSubscribed = true;
    m_outcomeIsDue = false;
    m_delay = firstDelay;
    Q_EMIT didRegisterClient(m_access.clientId);
}

void MqttPushClient::onEnded(const QString &reason)
{
    qCInfo(lcPlatform) << "no connection to the push broker:" << reason;
    // It is in the middle of telling.
    m_connection.release()->deleteLater();
    m_isSubscribed = false;
    m_retry = std::make_unique<QObject>();
    m_mainQueue->after(m_delay, m_retry.get(), [this] { connectToBroker(); });
    m_delay = std::min(2 * m_delay, longestDelay);
    if (std::exchange(m_outcomeIsDue, false))
        Q_EMIT didOccurError(reason);
}

void MqttPushClient::onMessage(const QByteArray &payload)
{
    const auto parsed = PushMessage::parse(payload);
    if (const auto *problem = std::get_if<QString>(&parsed)) {
        qCWarning(lcPlatform).noquote() << "a push message was dropped:" << *problem;
        return;
    }
    const auto &message = std::get<PushMessage>(parsed);
    if (m_store.remember(message.id))
        present(message);
}

void MqttPushClient::present(const PushMessage &message)
{
    const bool inForeground = QGuiApplication::applicationState() == Qt::ApplicationActive;
    if (!inForeground && (m_types & Badge))
        m_badge->setNumber(++m_unread);
    // In the foreground the user is asked whether to open the page, and needs no notification; one
    // that has no page is only ever seen as a notification.
    const bool asksInside = inForeground && message.opensPage;
    if (asksInside || !(m_types & Alert))
        Q_EMIT willPresentNotification(message.userInfo);
    else
        m_notifications->post(
            {message.title, message.body, bool(m_types & Sound)}, message.userInfo);
}

void MqttPushClient::registerRemoteNotification(int types)
{
    m_types = types;
}

void MqttPushClient::resetBadge()
{
    m_unread = 0;
}
