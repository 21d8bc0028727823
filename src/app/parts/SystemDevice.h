#pragma once

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/desktop/DesktopUrlOpener.h"
#include "platform/desktop/SystemReachability.h"
#include "platform/desktop/UrlSchemeHandler.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/media/CaptureDevice.h"
#include "platform/media/FolderPhotoLibrary.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "platform/services/BrowserWXApi.h"
#include "platform/services/PositioningLocationManager.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/KeyChainStore.h"
#include "platform/storage/UserDefaults.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/TimerMainQueue.h"

//! The system's own of everything that the client takes from the device. One for the process.
class SystemDevice
{
public:
    //! \a cameraFeed: a picture or video in place of a camera; null: the device's own.
    SystemDevice(const DeploymentConfiguration &configuration, const ProfilePaths &paths,
        const QString &cameraFeed);

    //! What the rooms are handed.
    Device device();

private:
    const ProfilePaths m_paths;
    TimerMainQueue m_mainQueue;
    NotificationCenter m_notifications;
    KeyChainStore m_keychain;
    UserDefaults m_defaults;
    HTTPCookieStorage m_cookieStorage;
    HTTPNetwork m_network;
    SystemReachability m_reachability;
    DesktopUrlOpener m_urlOpener;
    FolderPhotoLibrary m_photoLibrary;
    std::unique_ptr<CaptureDevice> m_camera;
    PositioningLocationManager m_locationManager;
    ApplicationBadge m_badge;
    DesktopNotifications m_desktopNotifications;
    DesktopNotifications m_pageNotifications;
    MqttPushClient m_pushClient;
    UrlSchemeHandler m_callbacks;
    BrowserWXApi m_wxApi;
};
