#pragma once

#include "platform/time/MainQueue.h"

//! The main queue on the event loop's timers.
class TimerMainQueue : public MainQueue
{
public:
    void after(
        std::chrono::milliseconds delay, QObject *context, std::function<void()> work) override;
    std::unique_ptr<Repetition> every(
        std::chrono::milliseconds interval, std::function<void()> work) override;
};
