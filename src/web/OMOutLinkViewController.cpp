#include "web/OMOutLinkViewController.h"

#include "web/EngineNavigation.h"
#include "web/WebCookieStore.h"
#include "web/WebPageProfile.h"

OMOutLinkViewController::OMOutLinkViewController(WebPageProfile *profile, PageHost *host)
    : m_profile(profile)
    , m_webView(profile->engineProfile(), nullptr, host)
{
    m_webView.setPolicy(
        [](const QUrl &url, bool, bool) { return EngineNavigation::mayFollow(url); });
    connect(
        &m_webView, &WebView::didFinishNavigation, this, [this] { setErrorViewVisible(false); });
    connect(&m_webView, &WebView::didFailNavigation, this, [this] { setErrorViewVisible(true); });
}

void OMOutLinkViewController::viewDidLoad()
{
    load();
}

void OMOutLinkViewController::load()
{
    m_profile->cookies()->copyStorage();
    if (!htmlStr.isEmpty())
        m_webView.loadHtml(htmlStr);
    else if (EngineNavigation::isLoadable(QUrl(urlStr)))
        m_webView.load(QUrl(urlStr));
    else
        setErrorViewVisible(true);
}

void OMOutLinkViewController::errorViewButtonDidPress()
{
    setErrorViewVisible(false);
    load();
}

void OMOutLinkViewController::setErrorViewVisible(bool visible)
{
    if (std::exchange(m_errorViewVisible, visible) != visible)
        Q_EMIT errorViewVisibleChanged();
}
