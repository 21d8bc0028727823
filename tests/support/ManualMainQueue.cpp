#include "support/ManualMainQueue.h"

class ManualRepetition : public Repetition
{
public:
    explicit ManualRepetition(std::shared_ptr<ManualMainQueue::Cycle> cycle)
        : m_cycle(std::move(cycle))
    {
    }

private:
    std::shared_ptr<ManualMainQueue::Cycle> m_cycle;
};

void ManualMainQueue::after(
    std::chrono::milliseconds delay, QObject *context, std::function<void()> work)
{
    m_works.emplace(m_now + delay, Work {context, std::move(work)});
}

std::unique_ptr<Repetition> ManualMainQueue::every(
    std::chrono::milliseconds interval, std::function<void()> work)
{
    auto cycle = std::make_shared<Cycle>(Cycle {interval, std::move(work)});
    schedule(cycle);
    return std::make_unique<ManualRepetition>(std::move(cycle));
}

void ManualMainQueue::schedule(const std::weak_ptr<Cycle> &cycle)
{
    m_cycles.emplace(m_now + cycle.lock()->interval, cycle);
}

void ManualMainQueue::advance(std::chrono::milliseconds time)
{
    const auto end = m_now + time;
    while (true) {
        const bool hasWork = !m_works.empty() && m_works.begin()->first <= end;
        const bool hasCycle = !m_cycles.empty() && m_cycles.begin()->first <= end;
        if (hasWork && (!hasCycle || m_works.begin()->first <= m_cycles.begin()->first)) {
            auto due = m_works.extract(m_works.begin());
            m_now = due.key();
            if (due.mapped().context)
                due.mapped().run();
        } else if (hasCycle) {
            auto due = m_cycles.extract(m_cycles.begin());
            m_now = due.key();
            if (const auto cycle = due.mapped().lock()) {
                schedule(cycle);
                cycle->run();
            }
        } else {
            break;
        }
    }
    m_now = end;
}

int ManualMainQueue::waiting() const
{
    return int(m_works.size());
}
