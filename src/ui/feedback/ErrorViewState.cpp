#include "ui/feedback/ErrorViewState.h"

#include <utility>

void ErrorViewState::setVisible(bool visible)
{
    if (std::exchange(m_visible, visible) != visible)
        Q_EMIT visibleChanged();
}
