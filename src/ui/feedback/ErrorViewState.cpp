#include "ui/feedback/ErrorViewState.h"

#include <utility>

void ErrorViewState::setVisible(bool visible)
{
    if (std::exchange(m_visible, visible) != visible)
        Q_EMIT visibleChanged();
}

void ErrorViewState::setReason(const QString &reason)
{
    if (std::exchange(m_reason, reason) != reason)
        Q_EMIT reasonChanged();
}
