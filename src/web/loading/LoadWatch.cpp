#include "web/loading/LoadWatch.h"

#include "platform/time/MainQueue.h"

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto noticed = 500ms;
constexpr auto longest = 30s;

}

LoadWatch::LoadWatch(MainQueue *mainQueue)
    : m_mainQueue(mainQueue)
{
}

LoadWatch::~LoadWatch() = default;

void LoadWatch::begin()
{
    m_load = std::make_unique<QObject>();
    m_mainQueue->after(noticed, m_load.get(), [this] { setSlow(true); });
    m_mainQueue->after(longest, m_load.get(), [this] {
        end();
        Q_EMIT gaveUp();
    });
}

void LoadWatch::end()
{
    m_load.reset();
    setSlow(false);
}

void LoadWatch::setSlow(bool slow)
{
    if (std::exchange(m_isSlow, slow) != slow)
        Q_EMIT slowChanged();
}
