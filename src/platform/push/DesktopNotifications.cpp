#include "platform/push/DesktopNotifications.h"

#include "platform/Logging.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

namespace {

const QString notificationService = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString defaultAction = QStringLiteral("default");
constexpr int answerTimeoutMs = 5'000;
constexpr int desktopDecidesHowLong = -1;
constexpr uint replacesNothing = 0;

void closeOnDesktop(uint id)
{
    QDBusMessage close = QDBusMessage::createMethodCall(
        notificationService, path, notificationService, u"CloseNotification"_s);
    close << id;
    QDBusConnection::sessionBus().send(close);
}

}

DesktopNotifications::DesktopNotifications(
    const QString &applicationName, const QString &desktopEntry)
    : m_applicationName(applicationName)
    , m_desktopEntry(desktopEntry)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(notificationService, path, notificationService, u"ActionInvoked"_s, this,
        SLOT(onActionInvoked(uint, QString)));
    bus.connect(notificationService, path, notificationService, u"NotificationClosed"_s, this,
        SLOT(onNotificationClosed(uint, uint)));
    bus.connect(notificationService, path, notificationService, u"ActivationToken"_s, this,
        SLOT(onActivationToken(uint, QString)));
}

void DesktopNotifications::post(const Content &content, const QVariantMap &userInfo)
{
    QVariantMap hints {{u"desktop-entry"_s, m_desktopEntry}, {u"category"_s, u"im.received"_s}};
    if (!content.sound)
        hints[u"suppress-sound"_s] = true;
    QDBusMessage notify = QDBusMessage::createMethodCall(
        notificationService, path, notificationService, u"Notify"_s);
    // The service takes the body for markup, the title for plain text.
    notify << m_applicationName << replacesNothing << m_desktopEntry
           << (content.title.isEmpty() ? m_applicationName : content.title)
           << content.body.toHtmlEscaped() << QStringList {defaultAction, u"查看"_s} << hints
           << desktopDecidesHowLong;
    m_awaited << userInfo;
    auto *watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(notify, answerTimeoutMs), this);
    const auto answered
        = [this, userInfo](QDBusPendingCallWatcher *call) { onAnswer(call, userInfo); };
    // Without a bus the call has failed already, and nobody would be told.
    if (watcher->isFinished())
        QMetaObject::invokeMethod(
            watcher, [answered, watcher] { answered(watcher); }, Qt::QueuedConnection);
    else
        connect(watcher, &QDBusPendingCallWatcher::finished, this, answered);
}

void DesktopNotifications::onAnswer(QDBusPendingCallWatcher *watcher, const QVariantMap &userInfo)
{
    watcher->deleteLater();
    const QDBusPendingReply<uint> reply = *watcher;
    const bool isWanted = m_awaited.removeOne(userInfo);
    if (reply.isError()) {
        qCInfo(lcPlatform) << "no notification service:" << reply.error().message();
        if (isWanted)
            Q_EMIT unavailable(userInfo);
    } else if (isWanted) {
        m_shown[reply.value()] = userInfo;
    } else {
        closeOnDesktop(reply.value());
    }
}

void DesktopNotifications::close(const QVariantMap &userInfo)
{
    m_awaited.removeOne(userInfo);
    for (const uint id : m_shown.keys(userInfo)) {
        m_shown.remove(id);
        closeOnDesktop(id);
    }
}

void DesktopNotifications::onActionInvoked(uint id, const QString &action)
{
    // Everybody's notifications are heard of here.
    if (action == defaultAction && m_shown.contains(id))
        Q_EMIT activated(m_shown.take(id));
}

void DesktopNotifications::onNotificationClosed(uint id, uint)
{
    if (const QVariantMap userInfo = m_shown.take(id); !userInfo.isEmpty())
        Q_EMIT closed(userInfo);
}

// The desktop's leave to come to the front, which the toolkit takes from there.
void DesktopNotifications::onActivationToken(uint id, const QString &token)
{
    if (m_shown.contains(id))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}
