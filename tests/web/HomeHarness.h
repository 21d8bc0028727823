#pragma once

#include "model/DeviceIdentifier.h"
#include "model/LoginModel.h"
#include "platform/FolderPhotoLibrary.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/NotificationCenter.h"
#include "platform/BrowserWXApi.h"
#include "platform/UrlOpener.h"
#include "session/SsoCookies.h"
#include "support/ManualMainQueue.h"
#include "support/NoPageServices.h"
#include "support/SwitchedReachability.h"
#include "ui/Shell.h"
#include "upload/SlicingUpload.h"
#include "web/PageHost.h"
#include "web/STHomeViewController.h"
#include "web/STHomeViewControllerDelegate.h"
#include "web/WebPageProfile.h"

#include <QNetworkAccessManager>
#include <QQuickView>
#include <QTemporaryDir>

//! Notes what it was asked to open.
class NotedUrlOpener : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &url) const override { return handled.contains(url.scheme()); }
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return true;
    }

    QStringList handled;
    QList<QUrl> opened;
};

//! The application's side of the home container, as far as the container sees it.
class NotedDelegate : public STHomeViewControllerDelegate
{
public:
    QString takeUrlStr() override { return std::exchange(urlStr, QString()); }
    std::optional<QVariantMap> takePushDictionary() override
    {
        return std::exchange(pushDictionary, std::nullopt);
    }
    void backGroundloginInWithRefresh(bool, std::function<void()> success) override
    {
        ++silentLogins;
        success();
    }
    void bindGeTuiAgain() override { ++pushStarts; }

    QString urlStr;
    std::optional<QVariantMap> pushDictionary;
    int silentLogins = 0;
    int pushStarts = 0;
};

//! The home screen in a window, with the real engine, storage and album in a temporary folder.
class HomeHarness
{
public:
    HomeHarness();

    void setPortal(const QString &redirectUrl);
    void addCookie(const char *name, const char *value, const QString &domain);
    //! Shows the screen, as the navigator does: the view first, then viewDidLoad.
    void show();
    bool waitForPage(const QString &title);
    QVariant evaluate(const QString &script);
    //! Clicks the control that has this accessible name.
    void clickText(const QString &text);

    QTemporaryDir folder;
    ManualMainQueue mainQueue;
    NotificationCenter notifications;
    UserDefaults defaults;
    HTTPCookieStorage cookies;
    QNetworkAccessManager network;
    SwitchedReachability reachability;
    NotedUrlOpener urlOpener;
    FolderPhotoLibrary album;
    KeyChainStore keychain;
    DeviceIdentifier identifier;
    BrowserWXApi wxApi {&urlOpener, nullptr, {}};
    LoginModel login;
    SsoCookies ssoCookies;
    Shell shell;
    NoPageServices services;
    PageHost pageHost;
    SlicingUpload slicingUpload;
    NotedDelegate delegate;
    std::unique_ptr<WebPageProfile> profile;
    STHomeViewController controller;
    QQuickView window;
};
