#include "services/scan/ScanSuccessJumpVC.h"

ScanSuccessJumpVC::ScanSuccessJumpVC(NavigationController *navigation)
    : m_navigation(navigation)
{
}

void ScanSuccessJumpVC::backPressed()
{
    if (m_navigation)
        m_navigation->pop();
}

void ScanSuccessJumpVC::refreshPressed()
{
    if (m_navigation)
        m_navigation->popToRoot();
}
