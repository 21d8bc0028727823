#include "app/RunningInstance.h"

#include "app/Logging.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QLockFile>

using namespace Qt::StringLiterals;

namespace {

constexpr int handOverTimeoutMs = 2'000;
// More than an argument of a command line can be.
constexpr qint64 longestMessage = 256 * 1024;
const QString pushKey = QStringLiteral("push");
const QString urlKey = QStringLiteral("url");

}

RunningInstance::RunningInstance(const QString &socketPath)
    : m_socketPath(socketPath)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
}

bool RunningInstance::handOver(const std::optional<QVariantMap> &push, const QUrl &url)
{
    // Two that start at once must not both find nobody.
    QLockFile lock(m_socketPath + u".lock"_s);
    lock.tryLock(handOverTimeoutMs);
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (socket.waitForConnected(handOverTimeoutMs)) {
        QJsonObject message;
        if (push)
            message.insert(pushKey, QJsonObject::fromVariantMap(*push));
        if (!url.isEmpty())
            message.insert(urlKey, url.toString(QUrl::FullyEncoded));
        socket.write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
        socket.waitForBytesWritten(handOverTimeoutMs);
        socket.disconnectFromServer();
        return true;
    }
    // Left behind by an instance that was killed.
    QLocalServer::removeServer(m_socketPath);
    if (!m_server.listen(m_socketPath))
        qCWarning(lcApp) << "later starts will not find this one:" << m_server.errorString();
    return false;
}

void RunningInstance::answer()
{
    connect(&m_server, &QLocalServer::newConnection, this, &RunningInstance::accept);
    while (m_server.hasPendingConnections())
        accept();
}

void RunningInstance::accept()
{
    QLocalSocket *socket = m_server.nextPendingConnection();
    const auto read = [this, socket] {
        if (socket->canReadLine())
            take(socket->readLine());
        else if (socket->bytesAvailable() > longestMessage)
            socket->abort();
    };
    connect(socket, &QLocalSocket::readyRead, this, read);
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    // One that has waited may have said all, and gone.
    read();
    if (socket->state() == QLocalSocket::UnconnectedState)
        socket->deleteLater();
}

void RunningInstance::take(const QByteArray &message)
{
    const QJsonObject handedOver = QJsonDocument::fromJson(message).object();
    const QJsonValue push = handedOver.value(pushKey);
    if (push.isObject())
        Q_EMIT pushReceived(push.toObject().toVariantMap());
    const QUrl url(handedOver.value(urlKey).toString(), QUrl::StrictMode);
    if (!url.isEmpty() && url.isValid())
        Q_EMIT urlReceived(url);
    Q_EMIT activated();
}
