#include "e2e/StepResult.h"

#include <cstdio>

using namespace Qt::StringLiterals;

QJsonObject StepResult::toJson() const
{
    return {{u"step"_s, step}, {u"ok"_s, ok}, {u"ms"_s, ms}, {u"screenshot"_s, screenshot},
        {u"detail"_s, detail}};
}

void StepResult::print() const
{
    std::printf("%-4s %-32s %6lld ms  %s\n", ok ? "ok" : "FAIL", qUtf8Printable(step), ms,
        qUtf8Printable(detail));
    std::fflush(stdout);
}

StepResult StepResult::fromJson(const QJsonObject &entry)
{
    return {entry[u"step"].toString(), entry[u"ok"].toBool(), entry[u"ms"].toInteger(),
        entry[u"screenshot"].toString(), entry[u"detail"].toString()};
}
