#pragma once

#include "ui/navigation/ViewController.h"
#include "web/bridge/BridgeTrust.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/engine/PageErrors.h"
#include "web/engine/WebView.h"
#include "web/home/HomeEnvironment.h"
#include "web/portal/ImageSaver.h"
#include "web/portal/PageServices.h"
#include "web/home/PushPages.h"

#include <QColor>
#include <QPointF>

class Repetition;
class WebPageProfile;

//! The home screen: one web view with the portal of the user's school, and its bridge to the
//! device. Made once by the application delegate and kept for the rest of the process.
class STHomeViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application delegate.")
    Q_PROPERTY(WebView *webView READ webView CONSTANT)
    Q_PROPERTY(QColor statusBarColor READ statusBarColor NOTIFY statusBarColorChanged)
    Q_PROPERTY(ErrorViewState *errorView READ errorView CONSTANT)

public:
    explicit STHomeViewController(const HomeEnvironment &environment);
    ~STHomeViewController() override;

    void viewDidLoad() override;
    void viewDidAppear() override;
    //! Back in the history, else to the portal's first page, and never out of the client.
    bool handleBack() override;

    WebView *webView() { return &m_webView; }
    //! What the pages may call is registered by who makes this.
    WebViewJavascriptBridge *bridge() { return &m_bridge; }
    PageServices *services() const { return m_services; }
    QColor statusBarColor() const;
    ErrorViewState *errorView() { return m_errors.state(); }

    //! Signs out: saved and live session cookies go, the page is emptied, the login flow takes
    //! over.
    void logout();
    void jump2LoginPage();
    void quickLogin(const QString &href);
    void changeStatusColor(const QString &color);
    //! Asks for a WeChat authorisation; its answer goes to the document that asks.
    void wechatLogin();
    void slicingUpload(const QJsonObject &config);
    void scanQrCode();
    void getLocation();
    bool isOnline() const;
    //! Answers unless the site's own address lacks what the portal's is made of.
    void getRequestUrl(const WebViewJavascriptBridge::Respond &respond) const;
    void getAppInfo(const WebViewJavascriptBridge::Respond &respond) const;

    //! For the view: a finger has rested on a point of the page, in CSS pixels.
    Q_INVOKABLE void longPressed(QPointF point);

    //! Pages may switch on that a long press offers to save an image.
    bool longClickSaveImgAble = false;
    //! The last colour that a page asked for.
    QString statusColor;

Q_SIGNALS:
    void statusBarColorChanged();

private:
    void observeNotifications();
    void configWebView();
    void configNSTimer();
    void stopNSTimer();
    void loadPortal();
    //! Calls a function of the document that asks now, as long as it is shown.
    PageServices::Answer toPage(const QString &function);
    void wechatAuthCodeCallback(const QVariant &answer);
    void didFinishNavigation();
    void errorViewButtonDidPress();

    void leaveUser();
    void leaveProfile();

    const Device m_device;
    Account *const m_account;
    Shell *const m_shell;
    Portal *const m_portal;
    PageServices *const m_services;
    STHomeViewControllerDelegate *const m_delegate;
    const QString m_portalHost;
    std::shared_ptr<WebPageProfile> m_profile;
    std::shared_ptr<WebPageProfile> m_formerProfile; // until its view has gone
    BridgeTrust m_trust;
    WebViewJavascriptBridge m_bridge;
    WebView m_webView;
    PageErrors m_errors;
    PushPages m_pushPages;
    QString m_wechatAsker; // the document that asked for an authorisation last
    ImageSaver m_imageSaver;
    std::unique_ptr<Repetition> m_pushTimer;
};
