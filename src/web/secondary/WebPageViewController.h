#pragma once

#include "ui/navigation/ViewController.h"
#include "web/engine/PageErrors.h"
#include "web/engine/WebView.h"

#include <memory>

class WebPageProfile;
class WebViewJavascriptBridge;

//! What the pages beside the home container have in common: a web view with the shell's cookies,
//! what stands in its place when it cannot be loaded, and a bridge of the page's own where it has
//! one. It holds its profile as long as it lives. Presented over another screen and owned by the
//! navigator from then on.
class WebPageViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the pages' controllers.")
    Q_PROPERTY(WebView *webView READ webView CONSTANT)
    Q_PROPERTY(ErrorViewState *errorView READ errorView CONSTANT)

public:
    ~WebPageViewController() override;

    QString urlStr;

    void viewDidLoad() override;
    bool handleBack() override;

    WebView *webView() { return &m_webView; }
    ErrorViewState *errorView() { return m_errors.state(); }
    //! Takes the screen away.
    Q_INVOKABLE void close();

protected:
    enum class Bridge { None, Own };

    WebPageViewController(std::shared_ptr<WebPageProfile> profile, PageHost *host, Bridge bridge);

    //! Where there is one; it serves whatever page the view shows.
    WebViewJavascriptBridge *bridge() const { return m_bridge.get(); }
    //! What urlStr stands for.
    virtual QUrl address() const;
    //! Loads the page, for the first time or anew, with the cookies of now.
    virtual void load();
    void copyCookies();

private:
    std::shared_ptr<WebPageProfile> m_profile;
    PageHost *m_host;
    std::unique_ptr<WebViewJavascriptBridge> m_bridge;
    WebView m_webView;
    PageErrors m_errors;
};
