#include "web/engine/WebView.h"

#include "platform/transport/ServerTrust.h"
#include "web/Logging.h"
#include "web/engine/EngineNavigation.h"
#include "web/engine/PageZoom.h"
#include "web/host/LinkHandOver.h"
#include "web/host/PageHost.h"
#include "web/profiles/PageScripts.h"

#include <QQuickWebEngineProfile>
#include <QWebEngineCertificateError>
#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// Before the server's answer the engine guesses no more than this.
constexpr int progressOfAnswer = 10;

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
    , m_dialogs(host->alertView(), host->mainQueue(), host->permissions())
    , m_downloads(host)
    , m_loading(host->mainQueue())
    , m_answers(
          host->alertView(), host->mainQueue(),
          [this](const std::function<void()> &answered) {
              evaluateJavaScript(
                  PageScripts::nothing(), [answered](const QVariant &) { answered(); });
          },
          [this] { return m_dialogs.areShown(); })
{
    connect(&m_loading, &LoadWatch::gaveUp, this, [this] {
        m_loadStarted = false;
        m_loadAwaited = false;
        Q_EMIT stopRequested();
        Q_EMIT loadEnded();
        fail(LoadProblem::noAnswer(), u"no answer"_s);
    });
    connect(&m_answers, &AnswerWatch::givenUp, this, &WebView::endHungPage);
}

// The engine's own url may be that of a page that is still on its way.
QUrl WebView::documentUrl() const
{
    return history() ? history()->currentItem().url() : QUrl();
}

QWebEngineHistory *WebView::history() const
{
    return m_view ? m_view->property("history").value<QWebEngineHistory *>() : nullptr;
}

int WebView::historyIndex() const
{
    return history() ? history()->currentItemIndex() : 0;
}

void WebView::load(const QUrl &url)
{
    if (m_host->links()->openForeign(url))
        return;
    schedule([this, url] { Q_EMIT loadRequested(url); });
}

void WebView::loadHtml(const QString &html)
{
    m_hasPage = false;
    m_downloads.withdraw();
    schedule([this, html] { Q_EMIT htmlRequested(html); });
}

void WebView::schedule(std::function<void()> load)
{
    // The engine keeps the page for as long as its dialog is open.
    m_dialogs.documentGone();
    m_loading.begin();
    m_windows.superseded();
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
    if (std::exchange(m_needsNewView, false)) {
        Q_EMIT recreateRequested();
        endEvaluations();
    }
    pending();
}

void WebView::reload()
{
    if (m_needsNewView)
        return load(m_url);
    m_dialogs.documentGone();
    m_loading.begin();
    Q_EMIT reloadRequested();
}

void WebView::startAfresh()
{
    m_hasPage = false;
    m_downloads.withdraw();
    m_travel.leave();
    m_windows.clear();
    // A view that has just been made takes no text.
    load(QUrl(u"about:blank"_s));
    m_needsNewView = bool(m_view);
    m_diedSinceLoad = false;
    Q_EMIT documentGone();
}

void WebView::startAfreshIn(QQuickWebEngineProfile *profile)
{
    m_profile = profile;
    m_profileIsNew = true;
    startAfresh();
}

void WebView::goBack()
{
    Q_EMIT historyStepRequested(-1);
}

void WebView::goForward()
{
    Q_EMIT historyStepRequested(1);
}

bool WebView::back()
{
    if (m_travel.leave())
        return true;
    const bool canGoBack = m_view && !m_needsNewView && m_view->property("canGoBack").toBool();
    if (canGoBack)
        goBack();
    return canGoBack;
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
    if (std::exchange(m_profileIsNew, false))
        Q_EMIT profileChanged();
    makePendingLoad();
}

void WebView::scriptFinished(int id, const QVariant &result)
{
    if (const Evaluated done = m_evaluations.take(id))
        done(result);
}

void WebView::endEvaluations()
{
    const auto evaluations = std::exchange(m_evaluations, {});
    for (const Evaluated &done : evaluations)
        done({});
}

bool WebView::navigationRequested(const QUrl &url, bool isMainFrame)
{
    using Target = NavigationPolicy::Target;
    applyPolicy(url, isMainFrame ? Target::MainFrame : Target::Subframe);
    const bool isElsewhere = isMainFrame && m_host->links()->openForeign(url);
    return !isElsewhere && EngineNavigation::mayFollow(url);
}

void WebView::windowCloseRequested()
{
    if (const auto opener = m_windows.openerOf(historyIndex()))
        Q_EMIT historyStepRequested(*opener - historyIndex());
}

double WebView::zoomFactor(double width, double textScale) const
{
    return PageZoom::factor(width, textScale, m_viewport);
}

void WebView::readViewport()
{
    evaluateJavaScript(PageScripts::viewport(), [self = QPointer(this)](const QVariant &viewport) {
        if (!self)
            return;
        self->m_viewport = viewport.toString();
        Q_EMIT self->viewportRead();
    });
}

void WebView::newWindowRequested(const QUrl &url, bool userInitiated)
{
    using Target = NavigationPolicy::Target;
    applyPolicy(url, userInitiated ? Target::NewWindow : Target::UnaskedWindow);
}

void WebView::applyPolicy(const QUrl &url, NavigationPolicy::Target target)
{
    LinkHandOver *links = m_host->links();
    const auto policy = NavigationPolicy::decide(url, target, links->customerServiceAccount());
    links->openFirst(policy.openInSystem);
    // A page that opens windows in a loop must not keep the view from what was asked for.
    const bool isInTheWay = target == NavigationPolicy::Target::UnaskedWindow && m_loadAwaited;
    if (policy.loadInThisView && !isInTheWay && EngineNavigation::isLoadable(url)) {
        load(url);
        m_windows.asked(historyIndex());
    }
}

void WebView::downloadRequested(QWebEngineDownloadRequest *request)
{
    m_downloads.start(request, m_url);
}

void WebView::engineUrlChanged(const QUrl &url)
{
    if (std::exchange(m_documentAwaited, false))
        m_dialogs.documentGone();
    if (m_url == url)
        return;
    m_url = url;
    Q_EMIT urlChanged();
}

void WebView::loadStarted()
{
    m_loadStarted = true;
    m_documentAwaited = true;
    m_answerAwaited = true;
    ++m_loads;
    m_loading.begin();
}

void WebView::loadProgressed(int progress)
{
    if (progress <= progressOfAnswer || !m_loadStarted)
        return;
    m_loading.end();
    // What the page before was asked, nobody answers.
    if (std::exchange(m_answerAwaited, false))
        m_answers.documentGone();
    m_answers.expectAnswer();
}

void WebView::inputGiven()
{
    m_answers.expectAnswer();
}

void WebView::endHungPage()
{
    const auto process = pid_t(m_view ? m_view->property("renderProcessPid").toLongLong() : 0);
    // Its end is seen to like any other.
    if (process > 0)
        ::kill(process, SIGKILL);
}

// An end that is reported after a newer load was asked for belongs to the one before.
bool WebView::endLoad()
{
    m_documentAwaited = false;
    if (!std::exchange(m_loadStarted, false))
        return false;
    m_loadAwaited = false;
    m_loading.end();
    Q_EMIT loadEnded();
    return true;
}

void WebView::loadSucceeded()
{
    m_diedSinceLoad = false;
    if (!endLoad())
        return;
    m_hasPage = m_url.scheme() != u"about" && m_url.scheme() != u"data";
    m_windows.shown(historyIndex());
    readViewport();
    Q_EMIT didFinishNavigation();
}

void WebView::loadFailed(int domain, int code, const QString &error)
{
    if (domain == QWebEngineLoadingInfo::HttpStatusCodeDomain) {
        if (!m_loadStarted)
            return;
        loadSucceeded();
        // With nothing to show the status is all there is to tell.
        evaluateJavaScript(
            PageScripts::isEmpty(), [this, code, load = m_loads](const QVariant &empty) {
                if (load == m_loads && empty.toBool())
                    fail(LoadProblem::ofStatus(code), u"status %1"_s.arg(code));
            });
        return;
    }
    if (endLoad())
        fail(LoadProblem::ofEngine(domain, code), error);
}

void WebView::fail(const LoadProblem &problem, const QString &detail)
{
    qCWarning(lcWeb) << "a page could not be loaded:" << detail;
    Q_EMIT didFailNavigation(problem);
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
    m_dialogs.documentGone();
    Q_EMIT documentGone();
    endEvaluations();
    m_needsNewView = true;
    m_answers.documentGone();
    if (std::exchange(m_diedSinceLoad, true))
        fail(LoadProblem::diesAgainAndAgain(), u"its process ends again and again"_s);
    else
        load(m_url);
}

bool WebView::trustsCertificate(const QVariant &error) const
{
    // The type has no empty value, which a conversion would need.
    const auto *certificateError = certificateErrorIn(error);
    // Added authorities mend that nobody knows the signer, and nothing else.
    return certificateError
        && certificateError->type() == QWebEngineCertificateError::CertificateAuthorityInvalid
        && ServerTrust::isTrusted(
            certificateError->certificateChain(), certificateError->url().host());
}
