#pragma once

#include "platform/http/HTTPSessionManager.h"
#include "support/Patience.h"

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

//! An answer as a server writes it.
inline QByteArray answer(int status, const QByteArray &headers = {}, const QByteArray &body = "x")
{
    return "HTTP/1.1 " + QByteArray::number(status) + " S\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n" + headers + "\r\n" + body;
}

//! The header of a redirection.
inline QByteArray location(const QString &address)
{
    return "Location: " + address.toUtf8() + "\r\n";
}

//! What came of a request: the answer, and the error's number.
using Outcome = std::pair<HTTPResponse, int>;
using Method = HTTPRequest::Method;

//! Carries a request out; a form and a part bring this body.
inline Outcome send(const HTTPSessionManager &manager, Method method, const QString &address,
    const QByteArray &body = "b=1")
{
    return answerOf<Outcome>([&](const auto &then) {
        const auto success = [then](const HTTPResponse &response) { then({response, 0}); };
        const auto failure = [then](const HTTPResponse &response, const HTTPError &error) {
            then({response, error.code});
        };
        const auto parameters
            = body.isEmpty() ? HTTPParameters() : HTTPParameters {{QStringLiteral("b"), 1}};
        if (method == Method::Get)
            manager.GET(address, {}, success, failure);
        else if (method == Method::Post)
            manager.POST(address, parameters, success, failure);
        else
            manager.PUT(address, body, success, failure);
    });
}
