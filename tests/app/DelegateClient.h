#pragma once

#include "app/AppDelegate.h"
#include "login/LoginViewController2.h"
#include "platform/ApplicationBadge.h"
#include "platform/DesktopUrlOpener.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/LocationManager.h"
#include "platform/NotificationCenter.h"
#include "platform/ShareSDK.h"
#include "platform/SystemReachability.h"
#include "platform/UnavailablePushClient.h"
#include "platform/WXApi.h"
#include "session/SessionClient.h"
#include "ui/Shell.h"
#include "web/STHomeViewController.h"
#include "web/UnavailablePageServices.h"
#include "web/WebPageProfile.h"

//! The vendors' services, which note what they were asked in one list.
struct NotedServices : LocationManager, ShareSDK
{
    void setEnableHTTPS(bool enabled) override { calls << u"https %1"_qs.arg(enabled); }
    bool setApiKey(const QString &key) override
    {
        calls << u"map "_qs + key;
        return true;
    }
    bool registerPlatforms(const QString &wechatAppId, const QString &qqAppId) override
    {
        calls << u"share %1 %2"_qs.arg(wechatAppId, qqAppId);
        return true;
    }
    void uploadPrivacyPermissionStatus(bool) override { }

    QStringList calls;
};

class NotedWXApi : public WXApi
{
public:
    explicit NotedWXApi(QStringList *calls)
        : m_calls(calls)
    {
    }

    bool registerApp(const QString &appId, const QString &universalLink) override
    {
        *m_calls << u"wechat %1 %2"_qs.arg(appId, universalLink);
        return true;
    }
    bool sendAuthReq(const QString &, const QString &) override { return true; }
    bool handleOpenURL(const QUrl &url) override { return url.scheme() == u"wx1"; }
    bool handleOpenUniversalLink(const QUrl &link) override { return link.host() == u"link.example"; }

private:
    QStringList *m_calls;
};

class NotedPushClient : public PushClient
{
public:
    explicit NotedPushClient(QStringList *calls)
        : m_calls(calls)
    {
    }

    void startSdk(const QString &id, const QString &key, const QString &secret) override
    {
        *m_calls << u"push %1 %2 %3"_qs.arg(id, key, secret);
    }
    void registerRemoteNotification(int types) override { *m_calls << u"show %1"_qs.arg(types); }
    void resetBadge() override { *m_calls << u"resetBadge"_qs; }

private:
    QStringList *m_calls;
};

//! The application without its window: the delegate with the real session, shell and controllers. Its clock stands
//! still until it is advanced.
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
    NotedServices services;
    NotedWXApi wxApi {&services.calls};
    NotedPushClient pushClient {&services.calls};
    PushRegistration pushRegistration;
    ApplicationBadge badge;
    SystemReachability reachability {true};
    DesktopUrlOpener urlOpener;
    FolderPhotoLibrary album;
    Shell shell;
    UnavailablePageServices pageServices;
    WebPageProfile profile;
    AppDelegate delegate;

private:
    std::unique_ptr<LoginViewController2> makeLogin();
    std::unique_ptr<STHomeViewController> makeHome();
};
