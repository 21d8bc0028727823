#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>

namespace sandbox {

//! What the command line asks for.
struct Options
{
    int port = 0; //!< 0: any port that is free on all addresses
    int schools = 3200;
    std::chrono::milliseconds latency {0};
    std::optional<std::string> traceFile;
    std::optional<std::string> storageDir; //!< where uploads are kept; none: for this run only
    bool help = false;
    bool version = false;
};

//! A command line that cannot be understood; what() is one line for the user.
struct BadArgument : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

Options parseOptions(int argc, char **argv);

extern const char *const usage;

} // namespace sandbox
