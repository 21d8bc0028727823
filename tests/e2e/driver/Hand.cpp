#include "e2e/driver/Hand.h"

#include "e2e/driver/Patience.h"

#include <QPointingDevice>
#include <QQuickWindow>
#include <QTest>

namespace {

constexpr int finger = 0;
constexpr int dragMoves = 12;
constexpr int holdMoves = 4;
constexpr int frameMs = 16;

}

Hand::Hand(QQuickWindow *window)
    : m_window(window)
    , m_screen(QTest::createTouchDevice())
{
}

Hand::~Hand() = default;

void Hand::tap(QPointF point)
{
    QTest::touchEvent(m_window, m_screen.get()).press(finger, point.toPoint(), m_window).commit();
    QTest::touchEvent(m_window, m_screen.get()).release(finger, point.toPoint(), m_window).commit();
}

void Hand::click(QPointF point)
{
    QTest::mouseMove(m_window, point.toPoint());
    QTest::mouseClick(m_window, Qt::LeftButton, {}, point.toPoint());
}

bool Hand::rest(QPointF point, const std::function<bool()> &until, int timeoutMs)
{
    QTest::touchEvent(m_window, m_screen.get()).press(finger, point.toPoint(), m_window).commit();
    const bool came = Patience::waitUntil(until, timeoutMs);
    QTest::touchEvent(m_window, m_screen.get()).release(finger, point.toPoint(), m_window).commit();
    return came;
}

void Hand::drag(QPointF from, QPointF to)
{
    QTest::touchEvent(m_window, m_screen.get()).press(finger, from.toPoint(), m_window).commit();
    for (int i = 1; i <= dragMoves + holdMoves; ++i) {
        const QPointF at = from + (to - from) * std::min(1.0, double(i) / dragMoves);
        QTest::touchEvent(m_window, m_screen.get()).move(finger, at.toPoint(), m_window).commit();
        // A finger takes its time, and without it the movement would be a flick.
        Patience::pass(frameMs);
    }
    QTest::touchEvent(m_window, m_screen.get()).release(finger, to.toPoint(), m_window).commit();
}

void Hand::type(const QString &text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, m_window, Qt::Key(character.toUpper().unicode()),
            QString(character), Qt::NoModifier);
}

void Hand::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window, key, modifiers);
}
