#include "e2e/Driver.h"

#include "e2e/StepFailed.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

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
{
}

void Driver::waitFor(const QString &what, const std::function<bool()> &seen, int timeoutMs)
{
    if (!QTest::qWaitFor(seen, timeoutMs))
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
        thing = m_screen.find(name, role);
        const bool atRest = thing && thing->place == std::exchange(before, thing->place);
        return atRest && Picture::of(m_window).hasInk(thing->place);
    });
    return *thing;
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
    photograph();
    note(u"toast \"%1\""_s.arg(text));
}

void Driver::seeInPage(const QString &selector, const QString &text)
{
    QString last;
    waitFor(u"\"%1\" in %2 of the page"_s.arg(text, selector), [&] {
        last = m_page.text(selector);
        const auto place = m_page.place(selector);
        return last.contains(text) && place && Picture::of(m_window).hasInk(*place);
    });
    note(u"%1: %2"_s.arg(selector, last.simplified()));
}

void Driver::seePage(const QString &path, const QString &selector)
{
    waitFor(u"the page %1 (it is %2)"_s.arg(path, m_page.path()), [&] {
        const auto place = m_page.place(selector);
        return m_page.path().startsWith(path) && place && Picture::of(m_window).hasInk(*place);
    });
}

void Driver::tap(const QString &name, QAccessible::Role role)
{
    m_hand.tap(see(name, role).place.center());
}

void Driver::click(const QString &name, QAccessible::Role role)
{
    m_hand.click(see(name, role).place.center());
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

Picture Driver::pictureAtRest()
{
    Picture before = Picture::of(m_window);
    QElapsedTimer timer;
    timer.start();
    // A blinking cursor or a turning wheel never rests.
    while (timer.elapsed() < restTimeoutMs) {
        QTest::qWait(betweenPicturesMs);
        Picture now = Picture::of(m_window);
        if (now == before)
            break;
        before = std::move(now);
    }
    return before;
}

void Driver::photograph()
{
    m_picture = pictureAtRest();
}

Picture Driver::takePicture()
{
    if (!m_picture)
        photograph();
    return *std::exchange(m_picture, std::nullopt);
}

void Driver::note(const QString &detail)
{
    m_notes << detail;
}

QString Driver::takeNotes()
{
    return std::exchange(m_notes, {}).join(u"; "_s);
}
