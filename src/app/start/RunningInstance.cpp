#include "app/start/RunningInstance.h"

#include "app/Logging.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QThread>

#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int handOverTimeoutMs = 2'000;
constexpr int pollMs = 20;
// More than an argument of a command line can be.
constexpr qint64 longestMessage = 256 * 1024;
const QString pushKey = QStringLiteral("push");
const QString urlKey = QStringLiteral("url");
const QString noteName = QStringLiteral("/instance.lock");
const QString socketName = QStringLiteral("/instance");

bool isOfThisUser(qintptr descriptor)
{
    ucred peer {};
    socklen_t size = sizeof peer;
    return ::getsockopt(int(descriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == ::geteuid();
}

//! Takes connections of this user's processes alone.
class UsersServer : public QLocalServer
{
protected:
    void incomingConnection(quintptr descriptor) override
    {
        if (isOfThisUser(qintptr(descriptor))) {
            QLocalServer::incomingConnection(descriptor);
            return;
        }
        qCWarning(lcApp) << "another user's process was turned away";
        ::close(int(descriptor));
    }
};

// Nobody else can put another socket in the place of one that lies there.
bool isPrivate(const QFileInfo &folder)
{
    return folder.ownerId() == ::geteuid()
        && !(folder.permissions() & (QFile::WriteGroup | QFile::WriteOther));
}

QByteArray messageOf(const std::optional<QVariantMap> &push, const QUrl &url)
{
    QJsonObject message;
    if (push)
        message.insert(pushKey, QJsonObject::fromVariantMap(*push));
    if (!url.isEmpty())
        message.insert(urlKey, url.toString(QUrl::FullyEncoded));
    return QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
}

}

RunningInstance::RunningInstance(const QString &folder)
    : m_folder(folder)
    , m_lock(folder, folder + noteName)
    , m_server(std::make_unique<UsersServer>())
{
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
}

RunningInstance::~RunningInstance() = default;

RunningInstance::Outcome RunningInstance::handOver(
    const std::optional<QVariantMap> &push, const QUrl &url)
{
    const QByteArray message = messageOf(push, url);
    const QDeadlineTimer deadline(handOverTimeoutMs);
    while (true) {
        if (m_lock.tryLock()) {
            listen();
            return Outcome::First;
        }
        if (send(message))
            return Outcome::HandedOver;
        if (deadline.hasExpired())
            return Outcome::InUse;
        // It has the lock, and will listen in a moment; or it is about to end.
        QThread::msleep(pollMs);
    }
}

bool RunningInstance::send(const QByteArray &message) const
{
    QLocalSocket socket;
    socket.connectToServer(m_lock.note());
    if (!socket.waitForConnected(handOverTimeoutMs) || !isOfThisUser(socket.socketDescriptor()))
        return false;
    socket.write(message);
    socket.waitForBytesWritten(handOverTimeoutMs);
    socket.disconnectFromServer();
    return true;
}

void RunningInstance::listen()
{
    QString path = m_folder + socketName;
    // Left behind by an instance that was killed.
    QLocalServer::removeServer(path);
    if (!isPrivate(QFileInfo(m_folder)) || !m_server->listen(path)) {
        // Others may write there, the path is too long for a socket, or the file system has none.
        m_socketFolder = std::make_unique<QTemporaryDir>();
        path = m_socketFolder->path() + socketName;
        if (!m_server->listen(path)) {
            qCWarning(lcApp) << "later starts will not find this one:" << m_server->errorString();
            return;
        }
    }
    m_lock.leaveNote(path);
}

void RunningInstance::answer()
{
    connect(m_server.get(), &QLocalServer::newConnection, this, &RunningInstance::accept);
    while (m_server->hasPendingConnections())
        accept();
}

void RunningInstance::accept()
{
    QLocalSocket *socket = m_server->nextPendingConnection();
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
