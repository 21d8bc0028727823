#include "web/travel/PageTravel.h"

#include <utility>

void PageTravel::setFinding(bool finding)
{
    if (std::exchange(m_isFinding, finding) != finding)
        Q_EMIT findingChanged();
}

bool PageTravel::leave()
{
    const bool wasFinding = m_isFinding;
    setFinding(false);
    return wasFinding;
}
