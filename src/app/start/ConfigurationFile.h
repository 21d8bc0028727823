#pragma once

#include "model/DeploymentConfiguration.h"

#include <variant>

//! Reads a deployment's configuration (TOML) over a base: keys that are absent keep the base's
//! values; a key that does not exist, a value of the wrong type and an address that is none are
//! errors.
namespace ConfigurationFile {

//! The configuration, or one line "file:line: what is wrong".
std::variant<DeploymentConfiguration, QString> read(
    const QString &filePath, const DeploymentConfiguration &base = {});
//! The same from a text; \a name stands for the file in the error.
std::variant<DeploymentConfiguration, QString> parse(
    const QByteArray &text, const QString &name, const DeploymentConfiguration &base = {});

}
