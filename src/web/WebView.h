#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QVariant>
#include <qqmlregistration.h>

#include <functional>

class PageHost;
class QQuickWebEngineProfile;

//! A web view as the controllers see it; WebPage.qml carries out what is asked here and reports
//! what happens.
//!
//! Owned by the controller of the screen. Of the loads asked for in one turn, or before the view
//! exists, the last is made. A dead renderer is replaced and its page loaded again; the second
//! death without a load in between is a failure.
class WebView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the controller of a screen.")
    Q_MOC_INCLUDE(<QQuickWebEngineProfile>)
    Q_MOC_INCLUDE("web/PageHost.h")
    Q_PROPERTY(QQuickWebEngineProfile *profile READ profile CONSTANT)
    Q_PROPERTY(QObject *bridge READ bridge CONSTANT)
    Q_PROPERTY(PageHost *host READ host CONSTANT)
    Q_PROPERTY(QUrl url READ url NOTIFY urlChanged)

public:
    //! Whether the engine may follow a navigation itself.
    using Policy = std::function<bool(const QUrl &url, bool isMainFrame, bool isNewWindow)>;
    using Evaluated = std::function<void(const QVariant &result)>;

    //! \a bridge is published to the page as "shell"; null: the pages of this view have none.
    WebView(QQuickWebEngineProfile *profile, QObject *bridge, PageHost *host);

    QQuickWebEngineProfile *profile() const { return m_profile; }
    QObject *bridge() const { return m_bridge; }
    PageHost *host() const { return m_host; }
    void setPolicy(Policy policy) { m_policy = std::move(policy); }

    //! What the view shows or loads; empty before the first load.
    QUrl url() const { return m_url; }
    //! The address of the document that the view shows now.
    QUrl documentUrl() const;
    //! Whether the view has shown a page of the network since it was last emptied.
    bool hasPage() const { return m_hasPage; }

    void load(const QUrl &url);
    //! Leaves the view without a page.
    void loadHtml(const QString &html);
    void reload();
    //! Steps in the history of the view, where there is one to make.
    void goBack();
    void goForward();
    //! Runs a script in the page; without a page the result is invalid.
    void evaluateJavaScript(const QString &script, Evaluated done = {});

    // Reports of the view.
    Q_INVOKABLE void viewCreated(QObject *view);
    Q_INVOKABLE void scriptFinished(int id, const QVariant &result);
    Q_INVOKABLE bool decidePolicy(const QUrl &url, bool isMainFrame, bool isNewWindow);
    Q_INVOKABLE void engineUrlChanged(const QUrl &url);
    Q_INVOKABLE void loadStarted();
    Q_INVOKABLE void loadSucceeded();
    //! An HTTP status is no failure: the server sent a page with it.
    Q_INVOKABLE void loadFailed(bool isHttpStatus, const QString &error);
    Q_INVOKABLE void loadStopped();
    //! What a page writes to its console: for its authors, who switch the category vant.web.page
    //! on.
    Q_INVOKABLE void consoleMessage(const QString &message, int line, const QString &source);
    Q_INVOKABLE void renderProcessTerminated(int exitCode);
    //! Whether a certificate that the engine refuses is signed by an authority the deployment adds.
    Q_INVOKABLE bool trustsCertificate(const QVariant &error) const;

Q_SIGNALS:
    void urlChanged();
    // For the view.
    void loadRequested(const QUrl &url);
    void htmlRequested(const QString &html);
    void reloadRequested();
    void historyStepRequested(int offset);
    //! \a id: 0 where nobody waits for the result.
    void scriptRequested(int id, const QString &script);
    void recreateRequested();
    // For the controller.
    void didFinishNavigation();
    void didFailNavigation(const QString &error);
    //! A load has ended in any way, or another has taken its place.
    void loadEnded();
    void documentGone();

private:
    void schedule(std::function<void()> load);
    void makePendingLoad();
    bool endLoad();

    QQuickWebEngineProfile *m_profile;
    QObject *m_bridge;
    PageHost *m_host;
    Policy m_policy;
    QUrl m_url;
    QPointer<QObject> m_view; // the engine's
    std::function<void()> m_pendingLoad; // the last one asked for in this turn
    bool m_loadStarted = false; // of the load asked for last
    bool m_loadAwaited = false; // one was asked for and has not ended
    bool m_hasPage = false;
    bool m_dead = false; // only a new view can show pages again
    QHash<int, Evaluated> m_evaluations;
    int m_lastEvaluation = 0;
    bool m_diedSinceLoad = false;
};
