#pragma once

#include "platform/desktop/ApplicationBadge.h"
#include "platform/media/FolderPhotoLibrary.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "platform/services/BrowserWXApi.h"
#include "platform/services/PositioningLocationManager.h"
#include "session/SessionClient.h"
#include "support/NoPageServices.h"
#include "ui/shell/Shell.h"
#include "web/home/HomeEnvironment.h"
#include "web/portal/Portal.h"

//! Keeps the answers that pages wait for.
class HeldPageServices : public NoPageServices
{
public:
    void scanQrCode(Answer answer) override { answers << answer; }
    void getLocation(Answer answer) override { answers << answer; }

    QList<Answer> answers;
};

//! A session and all else that a home container works with, in one temporary folder; its clock
//! stands still until it is advanced, and there is no broker.
class HomeStage
{
public:
    explicit HomeStage(const DeploymentConfiguration &configuration = {});

    HomeEnvironment environment(STHomeViewControllerDelegate *delegate);

    const DeploymentConfiguration configuration;
    SessionClient session;
    Account &account {session.account};
    ManualMainQueue &mainQueue {session.mainQueue};
    LoginModel &loginModel {account.loginModel};
    UserDefaults &defaults {session.defaults};
    NotificationCenter &notifications {session.notifications};
    SwitchedReachability &reachability {session.reachability};
    NotedUrlOpener &urlOpener {session.urlOpener};
    FolderPhotoLibrary album;
    BrowserWXApi wxApi {&urlOpener, nullptr, &defaults, {}};
    PositioningLocationManager locationManager {&mainQueue, &session.network, {}};
    ApplicationBadge badge {QStringLiteral("vant-student.desktop")};
    DesktopNotifications desktopNotifications {{}, {}};
    DesktopNotifications pageNotifications {{}, {}};
    MqttPushClient pushClient;
    const Device device; //!< the session's, and the rest of it
    Shell shell {mainQueue};
    HeldPageServices services;
    Portal portal;
};
