#include "web/secondary/WebPageViewController.h"

#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/engine/EngineNavigation.h"
#include "web/engine/PageHost.h"
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
        &m_webView, &WebView::didFinishNavigation, this, [this] { setErrorViewVisible(false); });
    connect(&m_webView, &WebView::didFailNavigation, this, [this] { setErrorViewVisible(true); });
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
    setErrorViewVisible(!EngineNavigation::isLoadable(url));
    if (!m_errorViewVisible)
        m_webView.load(url);
}

void WebPageViewController::copyCookies()
{
    m_profile->cookies()->copyStorage();
}

void WebPageViewController::errorViewButtonDidPress()
{
    load();
}

void WebPageViewController::close()
{
    m_host->close(this);
}

void WebPageViewController::setErrorViewVisible(bool visible)
{
    if (std::exchange(m_errorViewVisible, visible) != visible)
        Q_EMIT errorViewVisibleChanged();
}
