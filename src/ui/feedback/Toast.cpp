#include "ui/feedback/Toast.h"

#include "platform/time/MainQueue.h"

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

quint64 Toast::showLoading(const QString &text)
{
    m_loadings.append({++m_lastLoading, text});
    presentLoading();
    return m_lastLoading;
}

void Toast::showProgress(quint64 number, double progress)
{
    for (Loading &loading : m_loadings) {
        if (loading.number == number)
            loading.progress = progress;
    }
    presentLoading();
}

void Toast::hideLoading(quint64 number)
{
    m_loadings.removeIf([number](const Loading &loading) { return loading.number == number; });
    presentLoading();
}

void Toast::presentLoading()
{
    if (m_isCovered)
        return;
    if (!m_loadings.isEmpty()) {
        present(m_loadings.constLast().text, Kind::Loading, m_loadings.constLast().progress);
    } else if (std::exchange(m_visible, false)) {
        Q_EMIT changed();
    }
}

void Toast::presentForAWhile(const QString &text, Kind kind)
{
    if (text.isEmpty())
        return;
    m_isCovered = true;
    present(text, kind, -1);
    const auto generation = ++m_generation;
    m_queue.after(visibleTime, this, [this, generation] {
        if (generation != m_generation)
            return;
        m_isCovered = false;
        presentLoading();
    });
}

void Toast::present(const QString &text, Kind kind, double progress)
{
    m_text = text;
    m_kind = kind;
    m_progress = progress;
    m_visible = true;
    Q_EMIT changed();
}
