#include "e2e/driver/Patience.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace {

constexpr int betweenLooksMs = 15;

}

bool Patience::waitUntil(const std::function<bool()> &holds, int timeoutMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!holds()) {
        if (deadline.hasExpired())
            return false;
        pass(betweenLooksMs);
    }
    return true;
}

void Patience::pass(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
