#pragma once

#include "platform/http/HTTPSessionManager.h"
#include "support/Patience.h"

//! Of a server, as it is written.
inline QByteArray answer(int status, const QByteArray &headers = {}, const QByteArray &body = "x")
{
    return "HTTP/1.1 " + QByteArray::number(status) + " S\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n" + headers + "\r\n" + body;
}

inline QByteArray location(const QString &address)
{
    return "Location: " + address.toUtf8() + "\r\n";
}

//! What came of a request: the answer, and the error's number.
using Outcome = std::pair<HTTPResponse, int>;

//! Waits for it.
inline Outcome send(const HTTPSessionManager &manager, HTTPRequest::Method method,
    const QString &address, const QByteArray &body = "b=1")
{
    return answerOf<Outcome>([&](const auto &then) {
        const auto success = [then](const HTTPResponse &response) { then({response, 0}); };
        const auto failure = [then](const HTTPResponse &response, const HTTPError &error) {
            then({response, error.code});
        };
        const auto parameters
            = body.isEmpty() ? HTTPParameters() : HTTPParameters {{QStringLiteral("b"), 1}};
        if (method == HTTPRequest::Method::Get)
            manager.GET(address, {}, success, failure);
        else if (method == HTTPRequest::Method::Post)
            manager.POST(address, parameters, success, failure);
        else
            manager.PUT(address, body, success, failure);
    });
}
