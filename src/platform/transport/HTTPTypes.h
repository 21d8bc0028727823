#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include <functional>
#include <utility>

//! An answer of a server, as it came.
struct HTTPResponse
{
    int statusCode = 0;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    //! Every value of a header joined by ", ", null when the header is absent; names compare
    //! without case.
    QByteArray header(const QByteArray &name) const
    {
        QByteArray joined;
        for (const auto &[field, value] : headers) {
            if (field.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            if (!joined.isNull())
                joined += ", ";
            joined += value;
        }
        return joined;
    }
};

//! Why no usable answer came: the transport's error number (never 0), and a text for the log.
struct HTTPError
{
    int code = 0;
    QString description;

    bool operator==(const HTTPError &) const = default;
};

using HTTPSuccess = std::function<void(const HTTPResponse &response)>;
using HTTPFailure = std::function<void(const HTTPResponse &response, const HTTPError &error)>;

//! Parameters by name; strings, numbers and booleans.
using HTTPParameters = QMap<QString, QVariant>;
