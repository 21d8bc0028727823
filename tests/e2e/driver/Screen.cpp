#include "e2e/driver/Screen.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <functional>

namespace {

// Less than this of a thing is no thing on the screen.
constexpr double leastSide = 4;
constexpr double leastOpacity = 0.95;

using Visit = std::function<void(QQuickItem *, const QRectF &place, const QRectF &whole)>;

void walk(QQuickItem *item, QRectF bounds, double opacity, const Visit &visit)
{
    opacity *= item->opacity();
    if (!item->isVisible() || opacity < leastOpacity)
        return;
    const QRectF whole = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    const QRectF place = whole & bounds;
    if (item->clip())
        bounds = place;
    if (whole.width() >= leastSide && whole.height() >= leastSide)
        visit(item, place, whole);
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
        [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    for (QQuickItem *child : std::as_const(children))
        walk(child, bounds, opacity, visit);
}

QString nameOf(const QQuickItem *item, QAccessibleInterface *accessible)
{
    const QString name = accessible->text(QAccessible::Name);
    // The toolkit gives a password field's name to nobody.
    if (name.isEmpty() && accessible->state().passwordEdit)
        return item->property("placeholderText").toString();
    return name;
}

std::optional<Screen::Thing> topmost(
    const QList<Screen::Thing> &things, const QString &name, QAccessible::Role role)
{
    const auto found = std::find_if(things.rbegin(), things.rend(), [&](const auto &thing) {
        return thing.name == name && (role == Screen::AnyRole || thing.role == role);
    });
    return found == things.rend() ? std::nullopt : std::optional(*found);
}

void walk(const QQuickWindow *window, const Visit &visit)
{
    walk(window->contentItem(), QRectF(QPointF(), window->size()), 1, visit);
}

}

Screen::Screen(QQuickWindow *window)
    : m_window(window)
{
}

QList<Screen::Thing> Screen::everything() const
{
    QList<Thing> things;
    walk(m_window, [&](QQuickItem *item, const QRectF &place, const QRectF &whole) {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
        if (!accessible || !accessible->isValid())
            return;
        const QString name = nameOf(item, accessible);
        if (!name.isEmpty())
            things << Thing {name, accessible->role(), bool(accessible->state().checked),
                bool(accessible->state().focused), item->property("text").toString(), place, whole};
    });
    return things;
}

QList<Screen::Thing> Screen::things() const
{
    QList<Thing> things = everything();
    things.removeIf([](const Thing &thing) { return !thing.isInView(); });
    return things;
}

std::optional<Screen::Thing> Screen::find(const QString &name, QAccessible::Role role) const
{
    return topmost(things(), name, role);
}

std::optional<Screen::Thing> Screen::locate(const QString &name, QAccessible::Role role) const
{
    return topmost(everything(), name, role);
}

bool Screen::shows(const QString &name, QAccessible::Role role) const
{
    return find(name, role).has_value();
}

QString Screen::description() const
{
    QStringList names;
    for (const Thing &thing : things()) {
        if (!names.contains(thing.name))
            names << thing.name;
    }
    return names.join(u" | ");
}

QQuickItem *Screen::webView() const
{
    QQuickItem *view = nullptr;
    walk(m_window, [&](QQuickItem *item, const QRectF &, const QRectF &) {
        if (item->inherits("QQuickWebEngineView"))
            view = item;
    });
    return view;
}
