#pragma once

#include "model/DeploymentConfiguration.h"

class DeviceIdentifier;
class HTTPCookieStorage;
class LoginModel;
class MainQueue;
class NetworkReachabilityManager;
class NotificationCenter;
class PageHost;
class PageProfiles;
class PageServices;
class PhotoLibrary;
class QNetworkAccessManager;
class Shell;
class SlicingUpload;
class SsoCookies;
class STHomeViewControllerDelegate;
class UserDefaults;
class UserSession;
class WXApi;

//! Everything that the home container works with; nothing is owned, all must outlive it.
struct HomeEnvironment
{
    DeploymentConfiguration configuration;
    STHomeViewControllerDelegate *delegate;
    PageProfiles *profiles;
    LoginModel *loginModel;
    UserDefaults *defaults;
    UserSession *session;
    DeviceIdentifier *deviceIdentifier;
    HTTPCookieStorage *cookieStorage;
    SsoCookies *ssoCookies;
    NotificationCenter *notifications;
    MainQueue *mainQueue;
    NetworkReachabilityManager *reachability;
    QNetworkAccessManager *network;
    PhotoLibrary *photoLibrary;
    WXApi *wxApi;
    PageServices *services;
    PageHost *pageHost;
    SlicingUpload *slicingUpload;
    Shell *shell;
};
