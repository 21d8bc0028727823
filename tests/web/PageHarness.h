#pragma once

#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/UserDefaults.h"
#include "support/ManualMainQueue.h"
#include "support/NotedUrlOpener.h"
#include "support/PageServer.h"
#include "support/SwitchedReachability.h"
#include "ui/shell/Shell.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/engine/WebView.h"
#include "web/host/LinkHandOver.h"
#include "web/host/PageHost.h"
#include "web/permissions/PagePermissions.h"
#include "web/profiles/PageProfiles.h"

#include <QQmlEngine>
#include <QQuickView>
#include <QTemporaryDir>

//! A web view in a window with a profile of its own: the real engine, for the tests of this folder.
class PageHarness
{
public:
    explicit PageHarness(
        WebViewJavascriptBridge::Trust trust = [](const QString &) { return true; });

    //! Serves an HTML page of this content, and says where.
    QString page(const QByteArray &content, const QByteArray &path = "/page.html");
    //! As its address: "127.0.0.1:41234".
    QString host() const;
    //! Loads the page and waits for its end.
    bool load(const QString &url);
    bool loadPage(const QByteArray &content) { return load(page(content)); }
    //! Runs a script and waits for its result.
    QVariant evaluate(const QString &script);

    //! Kills the process of the page that is shown, as a warning will say.
    void killRenderer();

    PageServer server;
    QTemporaryDir folder;
    HTTPCookieStorage cookies;
    ManualMainQueue mainQueue;
    Shell shell {mainQueue};
    AlertView *alert {shell.alertView()};
    NotedUrlOpener urlOpener;
    QString foreignHost; //!< for the browser
    LinkHandOver linkHandOver {&urlOpener, &mainQueue, QStringLiteral("4711"),
        [this](const QUrl &page) { return page.host() == foreignHost; }};
    SwitchedReachability reachability;
    UserDefaults defaults {folder.filePath(QStringLiteral("settings.ini"))};
    bool isSignedIn = true;
    PagePermissions permissions {&defaults, [this] { return isSignedIn; }};
    PageHost pageHost {&shell, &mainQueue, &linkHandOver, &reachability,
        folder.filePath(QStringLiteral("kept")), &permissions};
    PageProfiles profiles {folder.filePath(QStringLiteral("web")), &cookies, &defaults, &mainQueue};
    WebPageProfile profile;
    WebViewJavascriptBridge bridge;
    WebView webView;
    QQuickView window;
};

//! Runs a script in a web view and waits for its result.
QVariant evaluateIn(WebView &webView, const QString &script);
//! Waits until the view shows a whole page of that title.
bool waitForTitle(WebView &webView, const QString &title);
