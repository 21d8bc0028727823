#pragma once

#include "push/BrokerFiles.h"

#include <string>

namespace sandbox {

//! Sends one message through the broker at that port, QoS 1, and waits until the broker has taken
//! it; throws std::runtime_error when it does not.
void publish(
    int port, const BrokerUser &user, const std::string &topic, const std::string &payload);

} // namespace sandbox
