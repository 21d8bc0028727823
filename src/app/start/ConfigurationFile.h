#pragma once

#include "model/DeploymentConfiguration.h"

#include <QByteArray>

#include <variant>

//! Reads a deployment's configuration (TOML) over a base: keys that are absent keep the base's
//! values; a key that does not exist, a value of the wrong type and an address that is none are
//! errors.
namespace ConfigurationFile {

//! The file's text, or one line that says why it cannot be read.
std::variant<QByteArray, QString> read(const QString &filePath);
//! The configuration, or one line "name:line: what is wrong".
std::variant<DeploymentConfiguration, QString> parse(
    const QByteArray &text, const QString &name, const DeploymentConfiguration &base = {});

}
