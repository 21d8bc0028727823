#pragma once

#include <chrono>
#include <cstdio>

//! Tells bench/run that something has been seen, by the clock that it has itself.
inline void report(const char *what)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::printf("%s %lld\n", what,
        static_cast<long long>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
    std::fflush(stdout);
}
