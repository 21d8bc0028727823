#include "platform/media/CameraPortal.h"

#include "platform/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString cameraInterface = QStringLiteral("org.freedesktop.portal.Camera");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

constexpr uint granted = 0;
constexpr uint cancelledByUser = 1;

CameraPortal::Answer answerOf(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::Disconnected:
        return CameraPortal::Answer::Missing;
    default:
        return error.name() == u"org.freedesktop.portal.Error.NotAllowed"
            ? CameraPortal::Answer::Forbidden
            : CameraPortal::Answer::Interrupted;
    }
}

}

CameraPortal::CameraPortal(const QDBusConnection &bus)
    : m_bus(bus)
{
    auto *watcher = new QDBusServiceWatcher(
        portalService, m_bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
        [this] { finish(Answer::Interrupted); });
}

bool CameraPortal::isPresent() const
{
    QDBusConnectionInterface *daemon = m_bus.isConnected() ? m_bus.interface() : nullptr;
    return daemon
        && (daemon->isServiceRegistered(portalService)
            || daemon->activatableServiceNames().value().contains(portalService));
}

void CameraPortal::accessCamera(std::function<void(Answer)> answer)
{
    if (m_answer) {
        QMetaObject::invokeMethod(
            this, [answer = std::move(answer)] { answer(Answer::Interrupted); },
            Qt::QueuedConnection);
        return;
    }
    m_answer = std::move(answer);
    call();
}

void CameraPortal::call()
{
    // The answer may come before the call returns, so its place is named by us.
    const QString token = u"vant%1"_s.arg(++m_requests);
    QString sender = m_bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    listenAt(desktopPath + u"/request/"_s + sender + u'/' + token);

    QDBusMessage message = QDBusMessage::createMethodCall(
        portalService, desktopPath, cameraInterface, u"AccessCamera"_s);
    message << QVariantMap {{u"handle_token"_s, token}};
    auto *pending = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *pending;
        if (!reply.isError())
            return listenAt(reply.value().path()); // older portals name it themselves
        qCInfo(lcPlatform) << "the desktop does not ask for the camera:" << reply.error().message();
        finish(answerOf(reply.error()));
    });
}

void CameraPortal::listenAt(const QString &requestPath)
{
    if (!m_answer || requestPath == m_requestPath)
        return;
    const QString signal = u"Response"_s;
    const char *slot = SLOT(responded(uint, QVariantMap));
    if (!m_requestPath.isEmpty())
        m_bus.disconnect(portalService, m_requestPath, requestInterface, signal, this, slot);
    m_requestPath = requestPath;
    if (!requestPath.isEmpty())
        m_bus.connect(portalService, requestPath, requestInterface, signal, this, slot);
}

void CameraPortal::responded(uint response, const QVariantMap &)
{
    finish(response == granted            ? Answer::Granted
            : response == cancelledByUser ? Answer::Refused
                                          : Answer::Interrupted);
}

void CameraPortal::finish(Answer answer)
{
    if (!m_answer)
        return;
    listenAt({});
    std::exchange(m_answer, {})(answer);
}
