#pragma once

#include "platform/storage/ProfilePaths.h"

class ApplicationBadge;
class CaptureDevice;
class DesktopNotifications;
class HTTPCookieStorage;
class KeyChainStore;
class LocationManager;
class MainQueue;
class NetworkReachabilityManager;
class NotificationCenter;
class PhotoLibrary;
class PushClient;
class HTTPNetwork;
class UrlOpener;
class UserDefaults;
class WXApi;

//! What the device and the services around it give, one of each. Nothing is owned; all of it
//! outlives whoever is handed it. A test puts its own clock, network or album into it.
struct Device
{
    ProfilePaths paths;
    MainQueue *mainQueue = nullptr;
    NotificationCenter *notifications = nullptr;
    KeyChainStore *keychain = nullptr;
    UserDefaults *defaults = nullptr;
    HTTPCookieStorage *cookieStorage = nullptr;
    HTTPNetwork *network = nullptr;
    NetworkReachabilityManager *reachability = nullptr;
    UrlOpener *urlOpener = nullptr;
    ApplicationBadge *badge = nullptr;
    PhotoLibrary *photoLibrary = nullptr;
    CaptureDevice *camera = nullptr;
    LocationManager *locationManager = nullptr;
    WXApi *wxApi = nullptr;
    PushClient *pushClient = nullptr;
    DesktopNotifications *pageNotifications = nullptr; //!< nobody's but the pages'
};
