#include "e2e/driver/Driver.h"

#include "e2e/driver/Patience.h"
#include "e2e/driver/StepFailed.h"

#include <QElapsedTimer>
#include <QQuickWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double longestDrag = 0.5; // of the window's height
constexpr int restTimeoutMs = 1'500;
constexpr int betweenPicturesMs = 50;

}

Driver::Driver(QQuickWindow *window, Wire *wire, const QString &profile)
    : m_window(window)
    , m_profile(profile)
    , m_screen(window)
    , m_hand(window)
    , m_page(m_screen, &m_hand)
    , m_wire(wire)
    , m_desktop(profile)
{
}

void Driver::waitFor(const QString &what, const std::function<bool()> &seen, int timeoutMs)
{
    if (!Patience::waitUntil(seen, timeoutMs))
        throw StepFailed {
            u"waited in vain for %1; on the screen: %2"_s.arg(what, m_screen.description())};
}

void Driver::check(bool holds, const QString &what)
{
    if (!holds)
        throw StepFailed {u"%1: does not hold"_s.arg(what)};
}

Screen::Thing Driver::see(const QString &name, QAccessible::Role role)
{
    std::optional<Screen::Thing> thing;
    QRectF before;
    waitFor(u"\"%1\""_s.arg(name), [&] {
        thing = m_screen.locate(name, role);
        if (!thing || thing->whole != std::exchange(before, thing->whole))
            return false;
        if (!thing->isInView() && rests(name, role, thing->whole))
            scrollTo(thing->whole.center());
        return thing->isInView() && Picture::of(m_window).hasInk(thing->place);
    });
    return *thing;
}

// What is on its way into the window must not be dragged.
bool Driver::rests(const QString &name, QAccessible::Role role, QRectF place)
{
    Patience::pass(betweenPicturesMs);
    const auto thing = m_screen.locate(name, role);
    return thing && thing->whole == place;
}

void Driver::scrollTo(QPointF point)
{
    const QPointF middle(m_window->width() / 2.0, m_window->height() / 2.0);
    const double reach = m_window->height() * longestDrag;
    const double way = qBound(-reach, middle.y() - point.y(), reach);
    const QPointF from = middle - QPointF(0, way / 2);
    m_hand.drag(from, from + QPointF(0, way));
}

void Driver::seeAll(const QStringList &names)
{
    for (const QString &name : names)
        see(name);
}

void Driver::seeNothingOf(const QString &name, QAccessible::Role role)
{
    waitFor(u"\"%1\" to go"_s.arg(name), [&] { return !m_screen.shows(name, role); });
}

void Driver::seeToast(const QString &text, const std::function<void()> &action)
{
    // One of the same text from before would be taken for the new one.
    seeNothingOf(text, QAccessible::AlertMessage);
    action();
    see(text, QAccessible::AlertMessage);
    m_picture = pictureAtRest();
    note(u"toast \"%1\""_s.arg(text));
}

void Driver::seeToast(const QString &text, const QString &button)
{
    seeToast(text, [&] { tap(button, QAccessible::Button); });
}

void Driver::seeNoToast()
{
    waitFor(u"the toast to go"_s, [&] {
        const QList<Screen::Thing> things = m_screen.things();
        return std::none_of(things.begin(), things.end(),
            [](const auto &thing) { return thing.role == QAccessible::AlertMessage; });
    });
}

void Driver::seeInPage(const QString &selector, const QString &text)
{
    std::optional<WebContent::Element> element;
    waitFor(u"\"%1\" in %2 of the page"_s.arg(text, selector), [&] {
        element = m_page.find(selector);
        return element && element->text.contains(text)
            && Picture::of(m_window).hasInk(element->place);
    });
    note(u"%1: %2"_s.arg(selector, element->text.simplified()));
}

void Driver::seePage(const QString &path, const QString &selector)
{
    waitFor(u"the page "_s + path, [&] {
        const auto element = m_page.find(selector);
        return element && element->page.startsWith(path) && !m_page.isLoading()
            && Picture::of(m_window).hasInk(element->place);
    });
    // Until the first frame of a page has come the engine drops what touches it.
    pictureAtRest();
}

QUrl Driver::seeOpened(const std::function<void()> &action)
{
    const qsizetype before = m_desktop.opened().size();
    action();
    waitFor(u"the browser to be opened"_s, [&] { return m_desktop.opened().size() > before; });
    return m_desktop.opened().constLast();
}

void Driver::tap(const QString &name, QAccessible::Role role)
{
    m_hand.tap(see(name, role).place.center());
}

void Driver::click(const QString &name, QAccessible::Role role)
{
    m_hand.click(see(name, role).place.center());
}

void Driver::answer(const QString &button, const QString &question)
{
    see(button, QAccessible::Button);
    photograph();
    tap(button, QAccessible::Button);
    seeNothingOf(question);
}

void Driver::enter(const QString &field, const QString &text)
{
    tap(field, QAccessible::EditableText);
    m_hand.press(Qt::Key_A, Qt::ControlModifier);
    m_hand.press(Qt::Key_Delete);
    m_hand.type(text);
    waitFor(u"\"%1\" in the field %2"_s.arg(text, field), [&] {
        const auto thing = m_screen.find(field, QAccessible::EditableText);
        return thing && thing->value == text;
    });
}

TracedRequest Driver::seeCall(const QString &start)
{
    QList<TracedRequest> calls;
    waitFor(u"the call "_s + start, [&] {
        calls = m_wire->requests(isCall(start));
        return !calls.isEmpty();
    });
    check(calls.size() == 1, u"%1 was asked for once"_s.arg(start));
    return calls[0];
}

TracedRequest Driver::firstRequestFor(const QString &path)
{
    const auto requests = m_wire->requests(isPath(path));
    check(!requests.isEmpty(), u"%1 was asked for"_s.arg(path));
    return requests[0];
}

void Driver::seeStatusStrip(const QColor &color)
{
    // Away from what a page shows: the strip's own corner.
    constexpr QPointF corner(4, 4);
    waitFor(u"the strip to be "_s + color.name(),
        [&] { return Picture::of(m_window).colorAt(corner) == color; });
    note(u"the strip is "_s + color.name());
}

Picture Driver::pictureAtRest()
{
    Picture before = Picture::of(m_window);
    QElapsedTimer timer;
    timer.start();
    // A blinking cursor or a turning wheel never rests.
    while (timer.elapsed() < restTimeoutMs) {
        Patience::pass(betweenPicturesMs);
        Picture now = Picture::of(m_window);
        if (now == before)
            break;
        before = std::move(now);
    }
    return before;
}

void Driver::photograph()
{
    seeNoToast();
    m_picture = pictureAtRest();
}

Picture Driver::takePicture()
{
    if (!m_picture)
        photograph();
    return *std::exchange(m_picture, std::nullopt);
}

Picture Driver::dropStep()
{
    m_picture.reset();
    m_notes.clear();
    return pictureAtRest();
}

void Driver::note(const QString &detail)
{
    m_notes << detail;
}

QString Driver::takeNotes()
{
    return std::exchange(m_notes, {}).join(u"; "_s);
}
