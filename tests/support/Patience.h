#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>
#include <utility>

//! How long a test waits for what a loaded machine may take its time for.
constexpr int patienceMs = 30'000;

//! Waits until \a condition holds, asked again after every turn of the event loop. The toolkit's
//! own sleeps between two turns, and a web engine takes many turns for a page.
template <typename Condition>
bool waitFor(const Condition &condition, int timeoutMs = patienceMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    QTimer wake; // Also what no event tells of is seen.
    wake.start(10);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

#define TRY_VERIFY(condition) QVERIFY(waitFor([&] { return bool(condition); }))
#define TRY_COMPARE(actual, expected)                                                              \
    do {                                                                                           \
        waitFor([&] { return (actual) == (expected); });                                           \
        QCOMPARE(actual, expected);                                                                \
    } while (false)

//! What a call tells the function that it is given. From inside the call, twice or never, it ends
//! the test program.
template <typename Answer, typename Call>
Answer answerOf(const Call &call)
{
    // Shared: what comes after the wait must still find its place.
    const auto answer = std::make_shared<std::optional<Answer>>();
    call([answer](const Answer &told) {
        if (std::exchange(*answer, told))
            qFatal("answered twice");
    });
    if (*answer || !waitFor([&] { return answer->has_value(); }))
        qFatal("answered from inside the call, or never");
    return **answer;
}
