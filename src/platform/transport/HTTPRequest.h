#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QUrl>

#include <chrono>
#include <utility>

//! One message to a server, as it is written on the wire.
struct HTTPRequest
{
    enum class Method { Get, Post, Put };

    Method method = Method::Get;
    QUrl url;
    QList<std::pair<QByteArray, QByteArray>> headers; //!< left out where it is more than one
    QByteArray body; //!< of a POST or PUT
    bool mayBeData = false; //!< whether an address that is its own content is good, too
    bool isDirect = false; //!< to its server without the environment's proxy
};

//! Whether a text is no more than one header's: it neither begins another one nor ends them all.
inline bool fitsAHeader(const QByteArray &text)
{
    return !text.contains('\r') && !text.contains('\n') && !text.contains('\0');
}

//! What an answer may be and take.
struct HTTPLimits
{
    QSet<QByteArray> contentTypes; //!< of an answer with a body; empty: any
    qint64 bodySize; //!< unpacked, in bytes
    std::chrono::milliseconds silence; //!< how long nothing may arrive or leave
    std::chrono::milliseconds whole {0}; //!< how long it may take in all; zero: any time
};
