#pragma once

#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <utility>

//! A server on loopback that does with each request as it is told.
class WireServer : public QTcpServer
{
public:
    using Script = std::function<void(QTcpSocket &client, const QByteArray &request)>;

    explicit WireServer(const Script &script)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, script] {
            QTcpSocket *client = nextPendingConnection();
            connect(client, &QTcpSocket::readyRead, this, [this, client, script] {
                m_unread[client] += client->readAll();
                if (!isWhole(m_unread[client]))
                    return;
                requests << std::exchange(m_unread[client], {});
                script(*client, requests.last());
            });
        });
    }

    QString address(const QString &path = QStringLiteral("/")) const
    {
        return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()) + path;
    }

    QByteArrayList requests; //!< as they came

private:
    static bool isWhole(const QByteArray &request)
    {
        const QByteArray name = "\r\ncontent-length: ";
        const qsizetype end = request.indexOf("\r\n\r\n");
        const qsizetype at = request.toLower().indexOf(name) + name.size();
        const qsizetype size = at < name.size()
            ? 0
            : request.sliced(at, request.indexOf('\r', at) - at).toLongLong();
        return end >= 0 && request.size() >= end + 4 + size;
    }

    QHash<QTcpSocket *, QByteArray> m_unread;
};
