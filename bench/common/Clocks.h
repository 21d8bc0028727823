#pragma once

#include <sys/resource.h>

#include <chrono>

//! Wall and processor time of this process since the start of an object, in milliseconds.
class Clocks
{
public:
    double wall() const { return milliseconds(std::chrono::steady_clock::now() - m_begin); }
    double processor() const { return processorNow() - m_processor; }

private:
    static double milliseconds(std::chrono::steady_clock::duration time)
    {
        return std::chrono::duration<double, std::milli>(time).count();
    }
    static double processorNow()
    {
        rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        const auto of = [](const timeval &time) {
            return double(time.tv_sec) * 1000 + double(time.tv_usec) / 1000;
        };
        return of(usage.ru_utime) + of(usage.ru_stime);
    }

    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
    double m_processor = processorNow();
};
