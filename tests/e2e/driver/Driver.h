#pragma once

#include "e2e/driver/Desktop.h"
#include "e2e/driver/Hand.h"
#include "e2e/driver/Picture.h"
#include "e2e/driver/Screen.h"
#include "e2e/driver/WebContent.h"
#include "e2e/driver/Wire.h"

#include <functional>

//! In the profile: what the camera sees.
inline const QString cameraFeed = QStringLiteral("camera.png");

//! What the steps work with: eyes, a hand, the page and the wire. Whatever is awaited in vain
//! throws StepFailed.
class Driver
{
public:
    static constexpr int patienceMs = 15'000;

    Driver(QQuickWindow *window, Wire *wire, const QString &profile);

    QQuickWindow *window() const { return m_window; }
    const Screen &screen() const { return m_screen; }
    Hand &hand() { return m_hand; }
    WebContent &page() { return m_page; }
    Wire &wire() { return *m_wire; }
    const Desktop &desktop() const { return m_desktop; }
    QString profile() const { return m_profile; }

    void waitFor(
        const QString &what, const std::function<bool()> &seen, int timeoutMs = patienceMs);
    void check(bool holds, const QString &what);

    //! Waits until a thing can be seen: found by name and painted, scrolled into view and
    //! at rest.
    Screen::Thing see(const QString &name, QAccessible::Role role = Screen::AnyRole);
    void seeAll(const QStringList &names);
    void seeNothingOf(const QString &name, QAccessible::Role role = Screen::AnyRole);
    //! Does something and waits for the toast that comes of it; the step's picture is taken while
    //! it shows.
    void seeToast(const QString &text, const std::function<void()> &action);
    //! The same for a tap on a button.
    void seeToast(const QString &text, const QString &button);
    //! Waits until the toast of an earlier step, whatever it says, has gone.
    void seeNoToast();
    //! Waits until an element of the page says what is wanted and is painted.
    void seeInPage(const QString &selector, const QString &text);
    //! Waits until the page at this path is there, painted.
    void seePage(const QString &path, const QString &selector);

    //! Does something and waits for the address that the browser is asked to open for it.
    QUrl seeOpened(const std::function<void()> &action);

    void tap(const QString &name, QAccessible::Role role = Screen::AnyRole);
    void click(const QString &name, QAccessible::Role role = Screen::AnyRole);
    //! Photographs a question, taps one of its buttons and waits until nothing is left of it.
    void answer(const QString &button, const QString &question);
    //! Fills a field anew.
    void enter(const QString &field, const QString &text);

    //! Waits until this operation of the platform was asked for since the wire's mark, and checks
    //! that it was once.
    TracedRequest seeCall(const QString &start);
    //! The page that the platform answered first at this path since the mark.
    TracedRequest firstRequestFor(const QString &path);

    //! Waits until the strip behind the status bar has this colour.
    void seeStatusStrip(const QColor &color);

    //! Takes the step's picture now. Without it the picture is taken at the step's end.
    void photograph();
    //! The step's picture, of now where none was taken.
    Picture takePicture();
    //! Forgets what a failed step has seen; the picture shows how it stands.
    Picture dropStep();
    //! Says in the report what was seen.
    void note(const QString &detail);
    QString takeNotes();

private:
    bool rests(const QString &name, QAccessible::Role role, QRectF place);
    void scrollTo(QPointF point);
    Picture pictureAtRest();

    QQuickWindow *m_window;
    QString m_profile;
    Screen m_screen;
    Hand m_hand;
    WebContent m_page;
    Wire *m_wire;
    Desktop m_desktop;
    std::optional<Picture> m_picture;
    QStringList m_notes;
};
