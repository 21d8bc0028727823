#pragma once

#include "http/Addresses.h"

#include <filesystem>

#include <sys/types.h>

namespace sandbox::BrokerProcess {

//! Starts the broker with that configuration; what it says goes to the log. Throws
//! std::runtime_error where the machine has none. It is killed when the calling thread ends.
pid_t start(const std::filesystem::path &configuration, const std::filesystem::path &log);
//! False from the child's end on, also before it is reaped.
bool isRunning(pid_t pid);
void waitForEnd(pid_t pid);
//! Waits for the end, after which the number belongs to nobody.
void reap(pid_t pid);

//! A port of that address that nobody used a moment ago; throws std::system_error.
int freePort(Host host);
bool accepts(Host host, int port);

} // namespace sandbox::BrokerProcess
