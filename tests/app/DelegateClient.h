#pragma once

#include "app/delegate/AppDelegate.h"
#include "app/parts/Screens.h"
#include "launch/LaunchStage.h"
#include "login/screen/SchoolLoginViewController.h"
#include "ui/navigation/NavigationController.h"
#include "web/HomeStage.h"
#include "web/home/STHomeViewController.h"

//! The application without its window: the delegate with the real session, shell and controllers.
//! Its clock stands still until it is advanced.
class DelegateClient
{
public:
    explicit DelegateClient(const DeploymentConfiguration &configuration);

    QString root() { return shell.navigator()->rootName(); }
    LoginModel &loginModel() { return stage.loginModel; }

    HomeStage stage;
    SessionClient &session {stage.session};
    Account &account {stage.account};
    ManualMainQueue &mainQueue {stage.mainQueue};
    NotificationCenter &notifications {stage.notifications};
    Shell &shell {stage.shell};
    PushRegistration &pushRegistration {stage.portal.pushRegistration};
    LaunchStage launch;
    Screens screens;
    //! What the window system is asked for, and what it says.
    QList<Qt::ScreenOrientation> orientations;
    QString orientationRefusal;
    AppDelegate delegate;

private:
    QString turn(Qt::ScreenOrientation orientation);
};
