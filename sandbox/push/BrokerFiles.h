#pragma once

#include "http/Certificate.h"

#include <filesystem>
#include <string>

namespace sandbox {

//! The ports of the broker, one without encryption and one with TLS: on the addresses of Host::Rb
//! and Host::Tls.
struct BrokerPorts
{
    int plain = 0;
    int tls = 0;
};

//! Who may use the broker.
struct BrokerUser
{
    std::string name;
    std::string password;
};

//! Writes what the broker reads at its start into a folder: who may use it and for what, the
//! certificate, and the configuration that names them all. Returns the configuration's path.
//!
//! A device reads the messages for its own client id alone; the school writes to all.
std::filesystem::path writeBrokerFiles(const std::filesystem::path &folder,
    const BrokerPorts &ports, const BrokerUser &device, const BrokerUser &school,
    const std::string &appId, const Certificate &certificate);

} // namespace sandbox
