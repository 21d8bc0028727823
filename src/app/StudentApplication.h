#pragma once

#include "app/AppDelegate.h"
#include "app/ProfilePaths.h"
#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "net/BaseRequestManager.h"
#include "net/RequestInterface.h"
#include "platform/ApplicationBadge.h"
#include "platform/DesktopUrlOpener.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemReachability.h"
#include "platform/TimerMainQueue.h"
#include "platform/UnavailableLocationManager.h"
#include "platform/UnavailablePushClient.h"
#include "platform/UnavailableShareSDK.h"
#include "platform/UnavailableWXApi.h"
#include "session/SsoCookies.h"
#include "session/LoginResult.h"
#include "ui/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/PageHost.h"
#include "web/UnavailablePageServices.h"

#include <QNetworkAccessManager>
#include <QQmlApplicationEngine>

class QQuickWindow;
class WebPageProfile;

//! The client: makes one of everything, gives each what it uses, and takes it all down in the right
//! order.
class StudentApplication : public QObject
{
    Q_OBJECT

public:
    StudentApplication(const DeploymentConfiguration &configuration, const ProfilePaths &paths);
    ~StudentApplication() override;

    //! Shows the window and launches.
    void start(const std::optional<QVariantMap> &launchNotification);

    QQuickWindow *window() const { return m_window; }

    // What a later start of the program hands over.
    void receivePush(const QVariantMap &userInfo);
    void receiveUrl(const QUrl &url);
    void activate();

private:
    std::unique_ptr<LoginViewController2> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome();
    WebPageProfile *homeProfile();
    void openOutLinkPage(const QString &urlStr, const QString &titleStr);
    void registerScreens();
    void warmWebEngineWhenIdle();

    DeploymentConfiguration m_configuration;
    ProfilePaths m_paths;
    TimerMainQueue m_mainQueue;
    NotificationCenter m_notifications;
    UserDefaults m_defaults;
    HTTPCookieStorage m_cookieStorage;
    QNetworkAccessManager m_network;
    SystemReachability m_reachability;
    DesktopUrlOpener m_urlOpener;
    FolderPhotoLibrary m_photoLibrary;
    KeyChainStore m_keychain;
    ApplicationBadge m_badge;
    UnavailablePushClient m_pushClient;
    UnavailableWXApi m_wxApi;
    UnavailableShareSDK m_shareSDK;
    UnavailableLocationManager m_locationManager;

    LoginModel m_loginModel;
    DeviceIdentifier m_studentIdentifier;
    DeviceIdentifier m_patriarchIdentifier;
    BaseRequestManager m_requestManager;
    RequestInterface m_requests;
    SsoCookies m_ssoCookies;
    LoginResult m_loginResult;
    PushBinding m_pushBinding;
    SilentLogin m_silentLogin;
    PushRegistration m_pushRegistration;
    Shell m_shell;
    UnavailablePageServices m_pageServices;
    PageHost m_pageHost;
    SlicingUpload m_slicingUpload;
    std::unique_ptr<WebPageProfile> m_homeProfile;
    std::unique_ptr<WebPageProfile> m_outLinkProfile;
    AppDelegate m_delegate;

    // The last member: views go before what they show.
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};
