#pragma once

#include <QPointF>
#include <QString>

#include <functional>
#include <memory>

class QPointingDevice;
class QQuickWindow;

//! A person's hand: touches, clicks and types into a window, by events such as the windowing
//! system's. Points are the window's.
class Hand
{
public:
    explicit Hand(QQuickWindow *window);
    ~Hand();

    void tap(QPointF point);
    //! With the mouse.
    void click(QPointF point);
    //! Rests a finger until something has come of it, or the time is over; whether it came.
    bool rest(QPointF point, const std::function<bool()> &until, int timeoutMs);
    //! Moves a finger from point to point and holds it before lifting, so that nothing coasts.
    void drag(QPointF from, QPointF to);

    void type(const QString &text);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

private:
    QQuickWindow *m_window;
    std::unique_ptr<QPointingDevice> m_screen;
};
