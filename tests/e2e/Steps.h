#pragma once

#include "e2e/Journey.h"

// The journey's chapters, in their order.
QList<Step> loginSteps(); //!< from the first start to the portal
QList<Step> portalSteps(); //!< what the portal's pages do in the view
QList<Step> uploadSteps(); //!< photos and a video from a page to the storage
QList<Step> bridgeSteps(); //!< every handler of the bridge, pressed
QList<Step> deviceSteps(); //!< what the pages reach of the device, and what reaches them
QList<Step> sessionSteps(); //!< signing out and in, quitting, starting again
