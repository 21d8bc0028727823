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
    , m_errors(&m_webView, host)
{
    connect(m_errors.state(), &ErrorViewState::retry, this, [this] { load(); });
    if (m_bridge)
        connect(&m_webView, &WebView::documentGone, m_bridge.get(),
            &WebViewJavascriptBridge::documentGone);
}

WebPageViewController::~WebPageViewController() = default;

void WebPageViewController::viewDidLoad()
{
    load();
}

bool WebPageViewController::handleBack()
{
    return m_webView.back();
}

QUrl WebPageViewController::address() const
{
    return QUrl(urlStr);
}

void WebPageViewController::load()
{
    copyCookies();
    const QUrl url = address();
    if (!EngineNavigation::isLoadable(url))
        return m_errors.showNoAddress();
    m_errors.hide();
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
