#pragma once

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>
#include <utility>

//! How long a test waits for what a loaded machine may take its time for.
constexpr int patienceMs = 30'000;

#define TRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patienceMs)
#define TRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patienceMs)

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
    if (*answer || !QTest::qWaitFor([&] { return answer->has_value(); }, patienceMs))
        qFatal("answered from inside the call, or never");
    return **answer;
}
