#pragma once

#include "platform/time/MainQueue.h"

#include <QPointer>

#include <map>
#include <vector>

//! A main queue whose time passes only when a test says so.
class ManualMainQueue : public MainQueue
{
public:
    void after(
        std::chrono::milliseconds delay, QObject *context, std::function<void()> work) override;
    std::unique_ptr<Repetition> every(
        std::chrono::milliseconds interval, std::function<void()> work) override;

    //! Lets time pass; what is due runs in the order of its time, what it schedules included.
    void advance(std::chrono::milliseconds time);
    //! Works that wait for their time, repetitions left out.
    int waiting() const;

private:
    struct Work
    {
        QPointer<QObject> context;
        std::function<void()> run;
    };
    struct Cycle
    {
        std::chrono::milliseconds interval;
        std::function<void()> run;
    };
    friend class ManualRepetition;

    void schedule(const std::weak_ptr<Cycle> &cycle);

    std::chrono::milliseconds m_now {0};
    std::multimap<std::chrono::milliseconds, Work> m_works;
    std::multimap<std::chrono::milliseconds, std::weak_ptr<Cycle>> m_cycles;
};
