#pragma once

#include <QTest>

//! How long a test waits for what a loaded machine may take its time for.
constexpr int patienceMs = 30'000;

#define TRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patienceMs)
#define TRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, patienceMs)
