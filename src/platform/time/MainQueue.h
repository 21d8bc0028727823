#pragma once

#include <chrono>
#include <functional>
#include <memory>

class QObject;

//! A repetition that runs until this handle is destroyed.
class Repetition
{
public:
    virtual ~Repetition() = default;
};

//! Work for later on the main thread: the one clock of the program, so that tests drive it by hand.
class MainQueue
{
public:
    virtual ~MainQueue() = default;

    //! Runs the work once after the delay; a context that dies first takes the work with it.
    virtual void after(
        std::chrono::milliseconds delay, QObject *context, std::function<void()> work)
        = 0;

    //! Runs the work after each interval, the first time after one interval.
    [[nodiscard]] virtual std::unique_ptr<Repetition> every(
        std::chrono::milliseconds interval, std::function<void()> work)
        = 0;
};
