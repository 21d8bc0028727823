#pragma once

#include "app/AppDelegate.h"
#include "login/LoginViewController2.h"
#include "platform/ApplicationBadge.h"
#include "platform/DesktopUrlOpener.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemReachability.h"
#include "platform/UnavailableLocationManager.h"
#include "platform/UnavailablePushClient.h"
#include "platform/UnavailableShareSDK.h"
#include "platform/UnavailableWXApi.h"
#include "session/SessionClient.h"
#include "ui/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/PageHost.h"
#include "web/STHomeViewController.h"
#include "web/UnavailablePageServices.h"
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
    UnavailableLocationManager locationManager;
    UnavailableShareSDK shareSDK;
    UnavailableWXApi wxApi;
    UnavailablePushClient pushClient;
    PushRegistration pushRegistration;
    ApplicationBadge badge;
    SystemReachability reachability {true};
    DesktopUrlOpener urlOpener;
    FolderPhotoLibrary album;
    Shell shell;
    UnavailablePageServices pageServices;
    PageHost pageHost;
    SlicingUpload slicingUpload;
    WebPageProfile profile;
    AppDelegate delegate;

private:
    std::unique_ptr<LoginViewController2> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome();
};
