#pragma once

#include "web/HomeStage.h"
#include "web/home/STHomeViewController.h"
#include "web/home/STHomeViewControllerDelegate.h"

#include <QQuickView>

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
    void keepNotification(const QVariantMap &userInfo) override { kept << userInfo; }
    void bindGeTuiAgain() override { ++pushStarts; }

    QString urlStr;
    std::optional<QVariantMap> pushDictionary;
    QList<QVariantMap> kept;
    int silentLogins = 0;
    int pushStarts = 0;
};

//! The home screen in a window, with the real engine, storage and album in a temporary folder.
class HomeHarness
{
public:
    //! \a trustedOrigins: whom the bridge serves; empty: everybody. \a foreignPages: where the rest
    //! is shown.
    explicit HomeHarness(const QStringList &trustedOrigins = {},
        const QString &foreignPages = QStringLiteral("here"));

    void setPortal(const QString &redirectUrl);
    void addCookie(const char *name, const char *value, const QString &domain);
    //! Shows the screen, as the navigator does: the view first, then viewDidLoad.
    void show();
    //! What another user finds, as the application sees to it.
    void changeUser();
    bool waitForPage(const QString &title);
    QVariant evaluate(const QString &script);
    //! Clicks the control that has this accessible name.
    void clickText(const QString &text);

    NotedDelegate delegate;
    HomeStage stage;
    STHomeViewController controller;
    QQuickView window;
};
