#pragma once

#include <QJsonObject>
#include <QMetaObject>

#include <optional>

//! Fills records from the server's objects by name; the one mapper of the program.
namespace DictionaryMapper {

//! Sets every property of the gadget whose name is a key of the dictionary. Numbers become strings
//! and strings numbers where the property asks for it; null, objects and text that is no number
//! leave the property as it is.
void fill(void *gadget, const QMetaObject &metaObject, const QJsonObject &dictionary);

template <typename Record>
Record model(const QJsonObject &dictionary)
{
    Record record;
    fill(&record, Record::staticMetaObject, dictionary);
    return record;
}

//! A server's text that may come as a number or a boolean; null when it is neither.
QString text(const QJsonValue &value);

//! A server's number that may come as a string; nothing when it is neither.
std::optional<qint64> integer(const QJsonValue &value);
//! A server's or a page's yes or no: a boolean, a number, or "true", "yes", "false" or "no".
std::optional<bool> boolean(const QJsonValue &value);
//! A number with a fraction that may come as a string.
std::optional<double> real(const QJsonValue &value);

}
