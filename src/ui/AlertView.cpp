#include "ui/AlertView.h"

AlertView::AlertView(QObject *parent)
    : QObject(parent)
{
}

void AlertView::show(const Alert &alert, Answer answer)
{
    ask(alert, [answer = std::move(answer)](int buttonIndex, const QString &) {
        if (answer)
            answer(buttonIndex);
    });
}

void AlertView::ask(const Alert &alert, InputAnswer answer)
{
    Pending pending {alert, std::move(answer)};
    if (alert.style == Alert::Style::FullScreen)
        pending.alert.cancellable = true;
    else if (alert.buttons.isEmpty())
        pending.alert.buttons = {QStringLiteral("确定")};
    m_queue.enqueue(std::move(pending));
    if (m_queue.size() == 1)
        Q_EMIT changed();
}

void AlertView::setInput(const QString &input)
{
    if (hasInput())
        m_queue.head().alert.input = input;
}

void AlertView::press(int buttonIndex)
{
    if (isVisible() && buttonIndex >= 0 && buttonIndex < buttons().size())
        finish(buttonIndex);
}

bool AlertView::cancel()
{
    if (!isVisible() || !isCancellable())
        return false;
    finish(cancelled);
    return true;
}

const Alert &AlertView::current() const
{
    static const Alert none;
    return m_queue.isEmpty() ? none : m_queue.head().alert;
}

void AlertView::finish(int buttonIndex)
{
    // The answer may show the next alert, so this one is out of the queue before.
    const Pending answered = m_queue.dequeue();
    Q_EMIT changed();
    answered.answer(buttonIndex, answered.alert.input.value_or(QString()));
}
