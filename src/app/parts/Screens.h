#pragma once

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"

#include <memory>

class Account;
class LaunchStage;
class Portal;
class SchoolLoginViewController;
class Shell;
class STHomeViewController;
class STHomeViewControllerDelegate;

//! Makes the controllers of the two flows, and names their screens to the shell.
class Screens
{
public:
    //! All must outlive this and what it makes.
    Screens(const Device &device, Account *account, Shell *shell, Portal *portal,
        LaunchStage *launch, const DeploymentConfiguration &configuration);

    //! Of the login screen that the deployment wants.
    std::unique_ptr<SchoolLoginViewController> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome(STHomeViewControllerDelegate *delegate);

private:
    Device m_device;
    Account *m_account;
    Shell *m_shell;
    Portal *m_portal;
    LaunchStage *m_launch;
    DeploymentConfiguration m_configuration;
};
