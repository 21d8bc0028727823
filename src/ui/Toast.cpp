#include "ui/Toast.h"

#include "platform/MainQueue.h"

using namespace std::chrono_literals;

namespace {
constexpr auto visibleTime = 2000ms;
}

Toast::Toast(MainQueue &queue, QObject *parent)
    : QObject(parent)
    , m_queue(queue)
{
}

void Toast::show(const QString &text)
{
    present(text, Kind::Plain);
}

void Toast::showError(const QString &text)
{
    present(text, Kind::Error);
}

void Toast::showSuccess(const QString &text)
{
    present(text, Kind::Success);
}

void Toast::hide()
{
    if (!m_visible)
        return;
    m_visible = false;
    Q_EMIT changed();
}

void Toast::present(const QString &text, Kind kind)
{
    if (text.isEmpty())
        return;
    m_text = text;
    m_kind = kind;
    m_visible = true;
    Q_EMIT changed();
    m_queue.after(visibleTime, this, [this, generation = ++m_generation] {
        if (generation == m_generation)
            hide();
    });
}
