#pragma once

#include "app/delegate/AppDelegate.h"
#include "app/parts/InputPause.h"
#include "app/parts/LoadAhead.h"
#include "app/start/ProfilePaths.h"
#include "app/parts/StudentPageServices.h"
#include "launch/LaunchStage.h"
#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "net/request/BaseRequestManager.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/desktop/DesktopUrlOpener.h"
#include "platform/desktop/SystemReachability.h"
#include "platform/desktop/UrlSchemeHandler.h"
#include "platform/media/CaptureDevice.h"
#include "platform/media/FolderPhotoLibrary.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "platform/services/BrowserWXApi.h"
#include "platform/services/DesktopShareSDK.h"
#include "platform/services/PositioningLocationManager.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/TimerMainQueue.h"
#include "services/share/LinkCodeSheet.h"
#include "session/LoginResult.h"
#include "session/SsoCookies.h"
#include "ui/shell/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/engine/LinkHandOver.h"
#include "web/engine/PageHost.h"
#include "web/profiles/PageProfiles.h"
#include "web/secondary/SecondaryPages.h"

#include <QNetworkAccessManager>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QScopeGuard>

class RunningInstance;

//! The client: makes one of everything, gives each what it uses, and takes it all down in the right
//! order.
class StudentApplication : public QObject
{
    Q_OBJECT

public:
    //! \a cameraFeed: a picture or video in place of a camera; null: the device's own.
    StudentApplication(const DeploymentConfiguration &configuration, const ProfilePaths &paths,
        const QString &cameraFeed = {});
    ~StudentApplication() override;

    //! Shows the window and launches.
    void start(const std::optional<QVariantMap> &launchNotification);

    QQuickWindow *window() const { return m_window; }

    //! From now on takes what later starts of the program hand over.
    void listenTo(RunningInstance *instance);
    //! A URL that another program handed to this one.
    void receiveUrl(const QUrl &url);

private:
    std::unique_ptr<SchoolLoginViewController> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome();
    void chooseFromAlbum(const ScanEnvironment::AlbumAnswer &answer);
    QSize windowPixels() const;
    QString turnWindow(Qt::ScreenOrientation orientation);
    void registerScreens();
    void forgetFormerUser();
    void prepareHomeInPause();
    void activate();

    LoadAhead m_loadAhead;
    DeploymentConfiguration m_configuration;
    ProfilePaths m_paths;
    TimerMainQueue m_mainQueue;
    NotificationCenter m_notifications;
    KeyChainStore m_keychain;
    UserDefaults m_defaults;
    HTTPCookieStorage m_cookieStorage;
    QNetworkAccessManager m_network;
    SystemReachability m_reachability;
    DesktopUrlOpener m_urlOpener;
    FolderPhotoLibrary m_photoLibrary;
    ApplicationBadge m_badge;
    DesktopNotifications m_desktopNotifications;
    MqttPushClient m_pushClient;
    UrlSchemeHandler m_callbacks;
    BrowserWXApi m_wxApi;
    PositioningLocationManager m_locationManager;
    std::unique_ptr<CaptureDevice> m_camera;

    LoginModel m_loginModel;
    DeviceIdentifier m_studentIdentifier;
    DeviceIdentifier m_patriarchIdentifier;
    BaseRequestManager m_requestManager;
    RequestInterface m_requests;
    SsoCookies m_ssoCookies;
    LoginResult m_loginResult;
    UserSession m_session;
    PushBinding m_pushBinding;
    SilentLogin m_silentLogin;
    PushRegistration m_pushRegistration;
    Shell m_shell;
    LinkHandOver m_linkHandOver;
    PageHost m_pageHost;
    PageProfiles m_pageProfiles;
    LinkCodeSheet m_linkCodeSheet;
    DesktopShareSDK m_shareSDK;
    SecondaryPages m_secondaryPages;
    StudentPageServices m_pageServices;
    SlicingUpload m_slicingUpload;
    LaunchStage m_launch;
    AppDelegate m_delegate;
    InputPause m_inputPause;

    // After the views, before what they work with.
    QScopeGuard<std::function<void()>> m_screens {[this] { m_shell.navigator()->end(); }};
    // Views go before what they show.
    QQmlApplicationEngine m_engine;
    QPointer<QQuickWindow> m_window;
};
