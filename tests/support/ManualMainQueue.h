#pragma once

#include "platform/time/MainQueue.h"

#include <QObject>
#include <QPointer>

#include <algorithm>
#include <map>

//! A main queue whose time passes only when a test says so.
class ManualMainQueue : public MainQueue
{
public:
    void after(
        std::chrono::milliseconds delay, QObject *context, std::function<void()> work) override
    {
        m_works.emplace(m_now + delay, Work {context, std::move(work)});
    }
    std::unique_ptr<Repetition> every(
        std::chrono::milliseconds interval, std::function<void()> work) override
    {
        auto repetition = std::make_unique<ManualRepetition>();
        m_works.emplace(m_now + interval, Work {&repetition->life, std::move(work), interval});
        return repetition;
    }

    //! Lets time pass; what is due runs in the order of its time, what it schedules included.
    void advance(std::chrono::milliseconds time)
    {
        const auto end = m_now + time;
        while (!m_works.empty() && m_works.begin()->first <= end) {
            auto due = m_works.extract(m_works.begin());
            Work &work = due.mapped();
            m_now = due.key();
            if (work.context)
                work.run();
            if (work.context && work.interval.count() > 0) {
                due.key() += work.interval;
                m_works.insert(std::move(due));
            }
        }
        m_now = end;
    }
    //! Works that wait for their time, repetitions left out.
    int waiting() const
    {
        return int(std::count_if(m_works.begin(), m_works.end(),
            [](const auto &timed) { return timed.second.interval.count() == 0; }));
    }

private:
    struct ManualRepetition : Repetition
    {
        QObject life;
    };
    struct Work
    {
        QPointer<QObject> context;
        std::function<void()> run;
        std::chrono::milliseconds interval {0}; //!< of a repetition
    };

    std::chrono::milliseconds m_now {0};
    std::multimap<std::chrono::milliseconds, Work> m_works;
};
