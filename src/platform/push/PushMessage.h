#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <variant>

//! A message of the push service: a JSON object with "payload", the address of a page (http or
//! https), with "title" and "body", which a notification shows, and with "id", by which a message
//! that is delivered twice is known. Each may be missing, but not the page and both texts.
struct PushMessage
{
    static constexpr qsizetype mostBytes = 64 * 1024;

    QString id;
    QString title;
    QString body;
    bool opensPage = false;
    QVariantMap userInfo; //!< the whole object

    //! The message, or what is wrong with it.
    static std::variant<PushMessage, QString> parse(const QByteArray &data);

    bool operator==(const PushMessage &) const = default;
};
