#pragma once

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"

class Account;
class PageServices;
class Portal;
class Shell;
class STHomeViewControllerDelegate;

//! What the home container works with; nothing is owned, all must outlive it.
struct HomeEnvironment
{
    Device device;
    Account *account;
    Shell *shell;
    Portal *portal;
    PageServices *services;
    STHomeViewControllerDelegate *delegate;
    DeploymentConfiguration configuration;
};
