#pragma once

#include "platform/media/FolderPhotoLibrary.h"
#include "platform/services/BrowserWXApi.h"
#include "platform/time/NotificationCenter.h"
#include "session/SessionClient.h"
#include "support/NoPageServices.h"
#include "support/NotedUrlOpener.h"
#include "support/SwitchedReachability.h"
#include "ui/shell/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/engine/LinkHandOver.h"
#include "web/engine/PageHost.h"
#include "web/home/HomeEnvironment.h"
#include "web/profiles/PageProfiles.h"

//! Keeps the answers that pages wait for.
class HeldPageServices : public NoPageServices
{
public:
    void scanQrCode(Answer answer) override { answers << answer; }
    void getLocation(Answer answer) override { answers << answer; }

    QList<Answer> answers;
};

//! A session and all else that a home container works with, in one temporary folder; its clock
//! stands still until it is advanced. The delegate is asked from the first upload on.
class HomeStage
{
public:
    HomeStage(const DeploymentConfiguration::Hosts &hosts, STHomeViewControllerDelegate *delegate);

    HomeEnvironment environment();

    SessionClient session;
    ManualMainQueue &mainQueue {session.mainQueue};
    LoginModel &loginModel {session.net.loginModel};
    UserDefaults &defaults {session.net.defaults};
    NotificationCenter notifications;
    SwitchedReachability reachability;
    NotedUrlOpener urlOpener;
    FolderPhotoLibrary album;
    BrowserWXApi wxApi {&urlOpener, nullptr, &defaults, {}};
    Shell shell {session.mainQueue};
    HeldPageServices services;
    LinkHandOver linkHandOver {&urlOpener, &mainQueue, QStringLiteral("4711")};
    PageHost pageHost;
    PageProfiles profiles;
    STHomeViewControllerDelegate *delegate;
    SlicingUpload slicingUpload;
};
