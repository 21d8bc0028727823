#pragma once

#include <QRectF>
#include <QVariant>

#include <optional>

class Hand;
class QQuickItem;
class Screen;

//! The page in the web view that can be seen. Its document is only read; everything else goes through the hand.
class WebContent
{
public:
    WebContent(const Screen &screen, Hand *hand);

    //! The value of an expression in the page; invalid without a page, or when it takes too long.
    QVariant read(const QString &expression) const;
    QString text(const QString &selector) const;
    QString path() const;
    //! Where an element is in the window, the part inside the view; null when there is no such element.
    std::optional<QRectF> place(const QString &selector) const;
    //! Whether a touch in its middle would reach the element.
    bool isReachable(const QString &selector) const;

    //! Drags the page until the element can be touched; throws StepFailed when it cannot be brought there.
    QPointF bringIntoView(const QString &selector) const;
    void tap(const QString &selector) const;
    void click(const QString &selector) const;

private:
    QQuickItem *view() const;

    const Screen &m_screen;
    Hand *m_hand;
};
