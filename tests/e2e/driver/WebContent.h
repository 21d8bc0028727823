#pragma once

#include <QRectF>
#include <QVariant>

#include <functional>
#include <optional>

class Hand;
class QQuickItem;
class Screen;

//! The page in the web view that can be seen. Its document is only read; everything else goes
//! through the hand.
class WebContent
{
public:
    struct Element
    {
        QString page; //!< path and query of the page it is on
        QString text;
        QRectF place; //!< in the window
        bool reachable = false; //!< a touch in its middle would reach it
    };

    WebContent(const Screen &screen, Hand *hand);

    //! The value of an expression in the page; invalid without a page, or when the page leaves
    //! meanwhile.
    QVariant read(const QString &expression) const;
    //! The first element that the CSS selector finds; null when there is none, or no page.
    std::optional<Element> find(const QString &selector) const;
    QString path() const;
    //! Whether the view still loads.
    bool isLoading() const;

    //! Drags the page until the element can be touched and rests; throws StepFailed when that
    //! cannot be.
    QPointF bringIntoView(const QString &selector) const;
    void tap(const QString &selector) const;

private:
    void dragTowards(const QRectF &place) const;

    const Screen &m_screen;
    Hand *m_hand;
};
