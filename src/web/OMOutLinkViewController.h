#pragma once

#include "ui/ViewController.h"
#include "web/WebView.h"

class HTTPCookieStorage;
class WebPageProfile;

//! A plain page of the network, or a text of its own, under a navigation bar. Presented over
//! another screen and owned by the navigator from then on.
class OMOutLinkViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by whoever opens a page.")
    Q_PROPERTY(WebView *webView READ webView CONSTANT)
    Q_PROPERTY(bool errorViewVisible READ errorViewVisible NOTIFY errorViewVisibleChanged)

public:
    OMOutLinkViewController(WebPageProfile *profile, PageHost *host);

    QString urlStr;
    QString htmlStr; //!< shown instead of the page when it is not empty

    void viewDidLoad() override;

    WebView *webView() { return &m_webView; }
    bool errorViewVisible() const { return m_errorViewVisible; }
    Q_INVOKABLE void errorViewButtonDidPress();

Q_SIGNALS:
    void errorViewVisibleChanged();

private:
    void load();
    void setErrorViewVisible(bool visible);

    WebPageProfile *m_profile;
    WebView m_webView;
    bool m_errorViewVisible = false;
};
