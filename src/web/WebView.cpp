#include "web/WebView.h"

#include "platform/ServerTrust.h"
#include "web/Logging.h"

#include <QQuickWebEngineProfile>
#include <QWebEngineCertificateError>
#include <QWebEngineHistory>

using namespace Qt::StringLiterals;

namespace {

const QWebEngineCertificateError *certificateErrorIn(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QWebEngineCertificateError>())
        return nullptr;
    return static_cast<const QWebEngineCertificateError *>(value.constData());
}

}

WebView::WebView(QQuickWebEngineProfile *profile, QObject *bridge, PageHost *host)
    : m_profile(profile)
    , m_bridge(bridge)
    , m_host(host)
{
}

// The engine's own url may be that of a page that is still on its way.
QUrl WebView::documentUrl() const
{
    const auto *history
        = m_view ? m_view->property("history").value<QWebEngineHistory *>() : nullptr;
    return history ? history->currentItem().url() : QUrl();
}

void WebView::load(const QUrl &url)
{
    schedule([this, url] { Q_EMIT loadRequested(url); });
}

void WebView::loadHtml(const QString &html)
{
    m_hasPage = false;
    schedule([this, html] { Q_EMIT htmlRequested(html); });
}

void WebView::schedule(std::function<void()> load)
{
    const bool scheduled = bool(m_pendingLoad);
    m_pendingLoad = std::move(load);
    m_loadStarted = false;
    if (std::exchange(m_loadAwaited, true))
        Q_EMIT loadEnded();
    if (m_view && !scheduled)
        QMetaObject::invokeMethod(this, &WebView::makePendingLoad, Qt::QueuedConnection);
}

void WebView::makePendingLoad()
{
    const auto pending = std::exchange(m_pendingLoad, {});
    if (!pending)
        return;
    // A view whose renderer died would load pages without the profile's scripts.
    if (std::exchange(m_dead, false))
        Q_EMIT recreateRequested();
    pending();
}

void WebView::reload()
{
    if (m_dead)
        load(m_url);
    else
        Q_EMIT reloadRequested();
}

void WebView::goBack()
{
    Q_EMIT historyStepRequested(-1);
}

void WebView::goForward()
{
    Q_EMIT historyStepRequested(1);
}

void WebView::evaluateJavaScript(const QString &script, Evaluated done)
{
    if (!m_view) {
        if (done)
            done({});
        return;
    }
    const int id = done ? ++m_lastEvaluation : 0;
    if (done)
        m_evaluations.insert(id, std::move(done));
    Q_EMIT scriptRequested(id, script);
}

void WebView::viewCreated(QObject *view)
{
    m_view = view;
    makePendingLoad();
}

void WebView::scriptFinished(int id, const QVariant &result)
{
    if (const Evaluated done = m_evaluations.take(id))
        done(result);
}

bool WebView::decidePolicy(const QUrl &url, bool isMainFrame, bool isNewWindow)
{
    return !m_policy || m_policy(url, isMainFrame, isNewWindow);
}

void WebView::engineUrlChanged(const QUrl &url)
{
    if (m_url == url)
        return;
    m_url = url;
    Q_EMIT urlChanged();
}

void WebView::loadStarted()
{
    m_loadStarted = true;
}

// An end that is reported after a newer load was asked for belongs to the one before.
bool WebView::endLoad()
{
    if (!std::exchange(m_loadStarted, false))
        return false;
    m_loadAwaited = false;
    Q_EMIT loadEnded();
    return true;
}

void WebView::loadSucceeded()
{
    m_diedSinceLoad = false;
    if (!endLoad())
        return;
    m_hasPage = m_url.scheme() != u"about" && m_url.scheme() != u"data";
    Q_EMIT didFinishNavigation();
}

void WebView::loadFailed(bool isHttpStatus, const QString &error)
{
    if (isHttpStatus) {
        loadSucceeded();
        return;
    }
    if (!endLoad())
        return;
    qCWarning(lcWeb) << "a page could not be loaded:" << error;
    Q_EMIT didFailNavigation(error);
}

void WebView::loadStopped()
{
    endLoad();
}

void WebView::consoleMessage(const QString &message, int line, const QString &source)
{
    qCDebug(lcWebPage).noquote() << u"%1:%2: %3"_s.arg(source).arg(line).arg(message);
}

void WebView::renderProcessTerminated(int exitCode)
{
    // A renderer that leaves in order has nothing to show for it.
    qCWarning(lcWeb) << "the page's process has ended, exit code" << exitCode;
    endLoad();
    Q_EMIT documentGone();
    m_evaluations.clear();
    m_dead = true;
    if (std::exchange(m_diedSinceLoad, true))
        Q_EMIT didFailNavigation(u"the page's process ends again and again"_s);
    else
        load(m_url);
}

bool WebView::trustsCertificate(const QVariant &error) const
{
    // The type has no empty value, which a conversion would need.
    const auto *certificateError = certificateErrorIn(error);
    return certificateError
        && ServerTrust::isTrusted(
            certificateError->certificateChain(), certificateError->url().host());
}
