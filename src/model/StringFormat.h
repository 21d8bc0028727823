#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

//! The one way to put values into fixed texts. A value that is missing prints as "(null)".
namespace StringFormat {

//! A value as text: strings as they are, numbers without a needless fraction, objects and lists as
//! compact JSON.
QString description(const QVariant &value);
QString description(const QJsonValue &value);
QString description(const QString &value);

//! The format with its "%@" replaced by the arguments, from left to right.
QString replaced(const QString &format, const QStringList &arguments);

template <typename... Values>
QString format(const QString &format, const Values &...values)
{
    return replaced(format, {description(values)...});
}

}
