#include "platform/time/TimerMainQueue.h"

#include <QTimer>

namespace {

class TimerRepetition : public Repetition
{
public:
    TimerRepetition(std::chrono::milliseconds interval, std::function<void()> work)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(work));
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
};

}

void TimerMainQueue::after(
    std::chrono::milliseconds delay, QObject *context, std::function<void()> work)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, context, std::move(work));
}

std::unique_ptr<Repetition> TimerMainQueue::every(
    std::chrono::milliseconds interval, std::function<void()> work)
{
    return std::make_unique<TimerRepetition>(interval, std::move(work));
}
