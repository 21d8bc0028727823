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
    presentForAWhile(text, Kind::Plain);
}

void Toast::showError(const QString &text)
{
    presentForAWhile(text, Kind::Error);
}

void Toast::showSuccess(const QString &text)
{
    presentForAWhile(text, Kind::Success);
}

void Toast::hide()
{
    if (!m_visible)
        return;
    m_visible = false;
    Q_EMIT changed();
}

quint64 Toast::showLoading(const QString &text)
{
    present(text, Kind::Loading);
    return m_generation;
}

void Toast::hideLoading(quint64 number)
{
    if (number == m_generation)
        hide();
}

void Toast::present(const QString &text, Kind kind)
{
    m_text = text;
    m_kind = kind;
    m_visible = true;
    ++m_generation;
    Q_EMIT changed();
}

void Toast::presentForAWhile(const QString &text, Kind kind)
{
    if (text.isEmpty())
        return;
    present(text, kind);
    m_queue.after(visibleTime, this, [this, generation = m_generation] {
        if (generation == m_generation)
            hide();
    });
}
