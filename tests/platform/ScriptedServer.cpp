#include "ScriptedServer.h"

#include <QRegularExpression>
#include <QTcpSocket>

namespace {

const QByteArray endOfHead = "\r\n\r\n";

qsizetype lengthOf(const QByteArray &request)
{
    const qsizetype head = request.indexOf(endOfHead);
    if (head < 0)
        return -1;
    static const QRegularExpression length(
        QStringLiteral("content-length: *(\\d+)"), QRegularExpression::CaseInsensitiveOption);
    const auto match = length.match(QString::fromLatin1(request.first(head)));
    return head + endOfHead.size() + match.captured(1).toLongLong();
}

}

ScriptedServer::ScriptedServer(const QByteArray &answer, Then then)
    : m_answer(answer)
    , m_then(then)
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, &ScriptedServer::accept);
}

QString ScriptedServer::address(const QString &path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
}

void ScriptedServer::accept()
{
    QTcpSocket *socket = nextPendingConnection();
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
}

void ScriptedServer::read(QTcpSocket *socket)
{
    const QByteArray received = socket->peek(socket->bytesAvailable());
    const qsizetype length = lengthOf(received);
    if (length < 0 || received.size() < length)
        return;
    requests << socket->read(length);
    if (m_answer.isNull())
        return;
    socket->write(m_answer);
    if (m_then == Then::Close)
        socket->disconnectFromHost();
}
