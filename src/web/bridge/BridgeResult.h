#pragma once

#include <QJsonObject>

//! The one shape of everything the shell tells a page: an object with the single key "result".
inline QJsonObject bridgeResult(const QJsonValue &value)
{
    return {{QStringLiteral("result"), value}};
}
