#include "ui/feedback/AlertView.h"

#include <algorithm>

AlertView::AlertView(QObject *parent)
    : QObject(parent)
{
}

int AlertView::show(const Alert &alert, Answer answer)
{
    return ask(alert, [answer = std::move(answer)](int buttonIndex, const Alert &) {
        if (answer)
            answer(buttonIndex);
    });
}

int AlertView::ask(const Alert &alert, InputAnswer answer)
{
    Pending pending {++m_lastNumber, alert, std::move(answer)};
    if (alert.style == Alert::Style::Dialog && alert.buttons.isEmpty())
        pending.alert.buttons = {Alert::confirm};
    m_queue.enqueue(std::move(pending));
    if (m_queue.size() == 1)
        announce();
    return m_lastNumber;
}

void AlertView::withdraw(int number)
{
    const auto it = std::find_if(m_queue.begin(), m_queue.end(),
        [number](const Pending &pending) { return pending.number == number; });
    if (it == m_queue.end())
        return;
    if (it == m_queue.begin())
        return finish(cancelled);
    const Pending withdrawn = *it;
    m_queue.erase(it);
    withdrawn.answer(cancelled, withdrawn.alert);
}

void AlertView::setInput(const QString &input)
{
    if (!hasInput() || this->input() == input)
        return;
    m_queue.head().alert.input = input;
    Q_EMIT inputChanged();
}

void AlertView::setPassword(const QString &password)
{
    if (!hasPassword() || this->password() == password)
        return;
    m_queue.head().alert.password = password;
    Q_EMIT inputChanged();
}

QString AlertView::inputName() const
{
    return current().inputName.isEmpty() ? message() : current().inputName;
}

void AlertView::press(int buttonIndex)
{
    if (isVisible() && buttonIndex >= 0 && buttonIndex < buttons().size())
        finish(buttonIndex);
}

bool AlertView::cancel()
{
    if (!isVisible() || (!isFullScreen() && !current().backButton))
        return false;
    finish(isFullScreen() ? cancelled : *current().backButton);
    return true;
}

const Alert &AlertView::current() const
{
    static const Alert none;
    return m_queue.isEmpty() ? none : m_queue.head().alert;
}

void AlertView::announce()
{
    Q_EMIT changed();
    Q_EMIT inputChanged();
}

void AlertView::finish(int buttonIndex)
{
    // The answer may show the next alert, so this one is out of the queue before.
    const Pending answered = m_queue.dequeue();
    announce();
    answered.answer(buttonIndex, answered.alert);
}
