#pragma once

#include "e2e/driver/Journey.h"

// The journey's chapters, in their order.
void launchSteps(Journey &journey); //!< from the installation to the login screen
void loginSteps(Journey &journey); //!< from the login screen to the portal
void portalSteps(Journey &journey); //!< what the portal's pages do in the view
void uploadSteps(Journey &journey); //!< photos and a video from a page to the storage
void bridgeSteps(Journey &journey); //!< every handler of the bridge, pressed
void deviceSteps(Journey &journey); //!< what the pages reach of the device, and what reaches them
void sessionSteps(Journey &journey); //!< signing out and in, quitting, starting again
void accountSteps(Journey &journey); //!< the older login screen, and enabling an account from there

Journey wholeJourney();
