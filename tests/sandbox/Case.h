#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <string_view>

//! One test. Defining it registers it: static const Case name("what holds", [] { … });
struct Case {
    Case(std::string name, std::function<void()> body);
};

//! Notes a failure of the running case and goes on.
void fail(const char* file, int line, const std::string& message);

template <typename Actual, typename Expected>
void compare(const char* file, int line, const char* text, const Actual& actual,
    const Expected& expected, std::string_view context)
{
    if (actual == expected)
        return;
    std::ostringstream message;
    message << text << " is " << actual << ", expected " << expected;
    if (!context.empty())
        message << "   (" << context << ")";
    fail(file, line, message.str());
}

//! The last argument says which row of a table is meant; it may be empty.
#define COMPARE(actual, expected, context)                                                         \
    compare(__FILE__, __LINE__, #actual, actual, expected, context)
#define VERIFY(condition, context)                                                                 \
    compare(__FILE__, __LINE__, #condition, bool(condition), true, context)
