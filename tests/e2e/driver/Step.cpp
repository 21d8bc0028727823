#include "e2e/driver/Step.h"

QString Step::firstNeedIn(const QStringList &names) const
{
    const auto found = std::find_if(
        needs.begin(), needs.end(), [&](const QString &need) { return names.contains(need); });
    return found == needs.end() ? QString() : *found;
}
