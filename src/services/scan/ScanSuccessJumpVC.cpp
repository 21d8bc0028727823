#include "services/scan/ScanSuccessJumpVC.h"

#include "ui/navigation/NavigationController.h"

void ScanSuccessJumpVC::backPressed()
{
    if (auto *navigation = NavigationController::of(this))
        navigation->pop();
}

void ScanSuccessJumpVC::refreshPressed()
{
    if (auto *navigation = NavigationController::of(this))
        navigation->popToRoot();
}
