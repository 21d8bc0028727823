#pragma once

#include "app/delegate/AppDelegate.h"
#include "launch/LaunchStage.h"
#include "login/school/LoginViewController2.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "platform/services/DesktopShareSDK.h"
#include "platform/services/PositioningLocationManager.h"
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

    DeploymentConfiguration configuration;
    HomeStage stage;
    SessionClient &session {stage.session};
    ManualMainQueue &mainQueue {stage.mainQueue};
    NotificationCenter &notifications {stage.notifications};
    Shell &shell {stage.shell};
    PositioningLocationManager locationManager {&mainQueue, &session.net.network, {}};
    DesktopShareSDK shareSDK {&stage.urlOpener, &stage.album, nullptr, {}};
    ApplicationBadge badge {QStringLiteral("vant-student.desktop")};
    DesktopNotifications desktopNotifications {{}, {}};
    //! Without a broker.
    MqttPushClient pushClient;
    PushRegistration pushRegistration;
    LaunchStage launch;
    //! What the window system is asked for, and what it says.
    QList<Qt::ScreenOrientation> orientations;
    QString orientationRefusal;
    AppDelegate delegate;

private:
    QString turn(Qt::ScreenOrientation orientation);
    std::unique_ptr<SchoolLoginViewController> makeLogin();
};
