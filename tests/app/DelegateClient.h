#pragma once

#include "app/AppDelegate.h"
#include "launch/LaunchStage.h"
#include "login/LoginViewController2.h"
#include "platform/ApplicationBadge.h"
#include "platform/BrowserWXApi.h"
#include "platform/DesktopShareSDK.h"
#include "platform/DesktopUrlOpener.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/NotificationCenter.h"
#include "platform/PositioningLocationManager.h"
#include "platform/SystemReachability.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "support/NoPageServices.h"
#include "session/SessionClient.h"
#include "ui/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/PageHost.h"
#include "web/STHomeViewController.h"
#include "web/WebPageProfile.h"

//! The application without its window: the delegate with the real session, shell and controllers.
//! Its clock stands still until it is advanced.
class DelegateClient
{
public:
    explicit DelegateClient(const DeploymentConfiguration &configuration);

    QString root() { return shell.navigator()->rootName(); }
    LoginModel &loginModel() { return session.net.loginModel; }

    DeploymentConfiguration configuration;
    SessionClient session;
    ManualMainQueue &mainQueue {session.mainQueue};
    NotificationCenter notifications;
    DesktopUrlOpener urlOpener;
    FolderPhotoLibrary album;
    PositioningLocationManager locationManager {&mainQueue, &session.net.network, {}};
    DesktopShareSDK shareSDK {&urlOpener, &album, nullptr, {}};
    BrowserWXApi wxApi {&urlOpener, nullptr, {}};
    ApplicationBadge badge {QStringLiteral("vant-student.desktop")};
    DesktopNotifications desktopNotifications {{}, {}};
    //! Without a broker.
    MqttPushClient pushClient;
    PushRegistration pushRegistration;
    SystemReachability reachability {true};
    Shell shell;
    NoPageServices pageServices;
    PageHost pageHost;
    SlicingUpload slicingUpload;
    WebPageProfile profile;
    LaunchStage launch;
    AppDelegate delegate;

private:
    std::unique_ptr<SchoolLoginViewController> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome();
};
