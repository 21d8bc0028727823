#pragma once

#include <QAccessible>
#include <QList>
#include <QRectF>
#include <QStringList>

#include <optional>

class QQuickItem;
class QQuickWindow;

//! What a window shows, found as a screen reader finds it: by role and accessible name.
class Screen
{
public:
    //! A thing on the screen.
    struct Thing
    {
        QString name;
        QAccessible::Role role;
        bool checked = false;
        bool focused = false;
        QString value; //!< of a field: what is in it
        QRectF place; //!< the part of it that shows, in the window
        QRectF whole; //!< all of it, where it would be if nothing cut it off

        //! Its middle can be seen and touched.
        bool isInView() const { return place.contains(whole.center()); }
    };
    static constexpr auto AnyRole = QAccessible::NoRole;

    explicit Screen(QQuickWindow *window);

    //! The topmost thing of this name that is in view.
    std::optional<Thing> find(const QString &name, QAccessible::Role role = AnyRole) const;
    //! The same, wherever on its screen it has been scrolled to.
    std::optional<Thing> locate(const QString &name, QAccessible::Role role = AnyRole) const;
    bool shows(const QString &name, QAccessible::Role role = AnyRole) const;
    //! All that is in view, from the lowest to the topmost.
    QList<Thing> things() const;
    //! For a report: the names of what can be seen.
    QString description() const;

    //! The topmost web view that can be seen, null when there is none.
    QQuickItem *webView() const;

private:
    QList<Thing> everything() const;

    QQuickWindow *m_window;
};
