#pragma once

#include "e2e/driver/Step.h"

#include <QList>

//! The runs of the client that the chapters happen in.
namespace Lives {
constexpr int refusal = 1; //!< a first start that ends with a refusal
constexpr int consent = 2; //!< a first start that goes on
constexpr int offer = 3; //!< an update may be had
constexpr int demand = 4; //!< an update must be had
constexpr int signIn = 5;
constexpr int comeBack = 6; //!< with the stored login
constexpr int expiry = 7; //!< with one that has expired
constexpr int accounts = 8; //!< deployed with the older login screen
}

// The journey's chapters, in their order.
QList<Step> launchSteps(); //!< from the installation to the login screen
QList<Step> loginSteps(); //!< from the login screen to the portal
QList<Step> portalSteps(); //!< what the portal's pages do in the view
QList<Step> uploadSteps(); //!< photos and a video from a page to the storage
QList<Step> bridgeSteps(); //!< every handler of the bridge, pressed
QList<Step> deviceSteps(); //!< what the pages reach of the device, and what reaches them
QList<Step> sessionSteps(); //!< signing out and in, quitting, starting again
QList<Step> accountSteps(); //!< the older login screen, and enabling an account from there
