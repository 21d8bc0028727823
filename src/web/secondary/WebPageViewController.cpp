#include "web/secondary/WebPageViewController.h"

#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/engine/EngineNavigation.h"
#include "web/host/PageHost.h"
#include "web/profiles/WebCookieStore.h"
#include "web/profiles/WebPageProfile.h"

WebPageViewController::WebPageViewController(
    std::shared_ptr<WebPageProfile> profile, PageHost *host, Bridge bridge)
    : m_profile(std::move(profile))
    , m_host(host)
    , m_bridge(bridge == Bridge::Own
              ? std::make_unique<WebViewJavascriptBridge>([](const QString &) { return true; })
              : nullptr)
    , m_webView(m_profile->engineProfile(), m_bridge.get(), host)
{
    connect(
        &m_webView, &WebView::didFinishNavigation, this, [this] { m_errorView.setVisible(false); });
    connect(
        &m_webView, &WebView::didFailNavigation, this, [this] { m_errorView.setVisible(true); });
    connect(&m_errorView, &ErrorViewState::retry, this, [this] { load(); });
    if (m_bridge)
        connect(&m_webView, &WebView::documentGone, m_bridge.get(),
            &WebViewJavascriptBridge::documentGone);
}

WebPageViewController::~WebPageViewController() = default;

void WebPageViewController::viewDidLoad()
{
    load();
}

QUrl WebPageViewController::address() const
{
    return QUrl(urlStr);
}

void WebPageViewController::load()
{
    copyCookies();
    const QUrl url = address();
    const bool isLoadable = EngineNavigation::isLoadable(url);
    m_errorView.setVisible(!isLoadable);
    if (isLoadable)
        m_webView.load(url);
}

void WebPageViewController::copyCookies()
{
    m_profile->cookies()->copyStorage();
}

void WebPageViewController::close()
{
    m_host->close(this);
}
