#include "app/parts/InputPause.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

InputPause::InputPause(MainQueue *mainQueue)
    : m_mainQueue(mainQueue)
{
}

void InputPause::await(std::function<void()> work)
{
    m_work = std::move(work);
    QCoreApplication::instance()->installEventFilter(this);
    m_looks = m_mainQueue->every(length, [this] { look(); });
}

void InputPause::look()
{
    if (std::exchange(m_hadInput, false))
        return;
    QCoreApplication::instance()->removeEventFilter(this);
    // The work may wait for events itself; this call comes from the repetition that ends here.
    const auto looks = std::move(m_looks);
    std::exchange(m_work, {})();
}

bool InputPause::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::Wheel:
        m_hadInput = true;
        break;
    default:
        break;
    }
    return false;
}
