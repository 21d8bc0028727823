#pragma once

#include <functional>

//! Waiting with the event loop at full speed. The test library's own waits sleep between turns of
//! the loop, which makes the web engine many times slower than it is.
namespace Patience {

//! Asks again and again until it holds or the time is over; whether it held.
bool waitUntil(const std::function<bool()> &holds, int timeoutMs);
//! Lets time pass, for what a hand does takes time.
void pass(int ms);

}
