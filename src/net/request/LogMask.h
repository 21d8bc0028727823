#pragma once

#include "platform/transport/HTTPTypes.h"

#include <QJsonObject>

//! Secrets as they may appear in a log line.
namespace LogMask {

//! A secret's stand-in; a null or empty one stays visible as that.
QString secret(const QString &value);
//! Parameters with passwords, tokens, signatures and personal identifiers masked.
HTTPParameters parameters(const HTTPParameters &parameters);
//! The same of the members of an answer that is an object.
QJsonValue answer(const QJsonValue &answer);

}
