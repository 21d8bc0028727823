#pragma once

#include <QByteArray>
#include <QJsonValue>

#include <optional>

//! Reads JSON whose top level may be any value: an object or a list, but also 12, "x" or null
//! alone.
namespace JsonFragment {

//! Nothing for a text that is no JSON value: empty, cut off, or with something behind it.
std::optional<QJsonValue> parse(const QByteArray &text);

}
