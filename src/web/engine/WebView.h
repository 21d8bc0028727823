#pragma once

#include "web/engine/NavigationPolicy.h"
#include "web/engine/OpenedWindows.h"
#include "web/files/PageDownloads.h"
#include "web/loading/AnswerWatch.h"
#include "web/loading/LoadProblem.h"
#include "web/loading/LoadWatch.h"
#include "web/questions/PageDialogs.h"
#include "web/travel/PageTravel.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QVariant>
#include <qqmlregistration.h>

#include <functional>

class PageHost;
class QQuickWebEngineProfile;
class QWebEngineDownloadRequest;
class QWebEngineHistory;

//! A web view as the controllers see it: what it shows, and what becomes of each load.
//!
//! WebPage.qml carries out what is asked here and reports what happens.
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
    Q_MOC_INCLUDE(<QWebEngineDownloadRequest>)
    Q_PROPERTY(QQuickWebEngineProfile *profile READ profile NOTIFY profileChanged)
    Q_PROPERTY(QObject *bridge READ bridge CONSTANT)
    Q_PROPERTY(PageDialogs *dialogs READ dialogs CONSTANT)
    Q_PROPERTY(LoadWatch *loading READ loading CONSTANT)
    Q_PROPERTY(PageTravel *travel READ travel CONSTANT)
    Q_PROPERTY(QUrl url READ url NOTIFY urlChanged)

public:
    using Evaluated = std::function<void(const QVariant &result)>;

    //! \a bridge is published to the page as "shell"; null: the pages of this view have none.
    WebView(QQuickWebEngineProfile *profile, QObject *bridge, PageHost *host);

    QQuickWebEngineProfile *profile() const { return m_profile; }
    QObject *bridge() const { return m_bridge; }
    PageDialogs *dialogs() { return &m_dialogs; }
    LoadWatch *loading() { return &m_loading; }
    PageTravel *travel() { return &m_travel; }

    //! What the view shows or loads; empty before the first load.
    QUrl url() const { return m_url; }
    //! The address of the document that the view shows now.
    QUrl documentUrl() const;
    //! Whether the view has shown a page of the network since it was last emptied.
    bool hasPage() const { return m_hasPage; }

    void load(const QUrl &url);
    //! Shows a text in the place of a page.
    void loadHtml(const QString &html);
    void reload();
    //! Leaves the view without a page and without a history: what is loaded next comes in a new
    //! view.
    void startAfresh();
    //! The same, in another profile; the one before is in use until profileChanged.
    void startAfreshIn(QQuickWebEngineProfile *profile);
    //! Steps in the history of the view, where there is one to make.
    void goBack();
    Q_INVOKABLE void goForward();
    //! Leaves what lies over the page, else goes back in its history. False: there is neither.
    bool back();
    //! Runs a script in the page; without a page, or when it goes meanwhile, the result is invalid.
    void evaluateJavaScript(const QString &script, Evaluated done = {});

    // Reports of the view.
    Q_INVOKABLE void viewCreated(QObject *view);
    Q_INVOKABLE void scriptFinished(int id, const QVariant &result);
    //! A frame of the page is about to go to the address; links for other programs go to them, and
    //! pages for the browser there. False: the engine may not follow it itself.
    Q_INVOKABLE bool navigationRequested(const QUrl &url, bool isMainFrame);
    //! A window of its own is asked for; \a userInitiated: by a touch.
    Q_INVOKABLE void newWindowRequested(const QUrl &url, bool userInitiated);
    //! The page wants to be gone: nothing, unless another page has opened it.
    Q_INVOKABLE void windowCloseRequested();
    //! How large the page is to be drawn in a view of that width.
    Q_INVOKABLE double zoomFactor(double width, double textScale) const;
    Q_INVOKABLE void downloadRequested(QWebEngineDownloadRequest *request);
    Q_INVOKABLE void engineUrlChanged(const QUrl &url);
    Q_INVOKABLE void loadStarted();
    //! In per cent, as the engine guesses it.
    Q_INVOKABLE void loadProgressed(int progress);
    Q_INVOKABLE void loadSucceeded();
    //! The engine's domain and number. An HTTP status is no failure where a page came with it.
    Q_INVOKABLE void loadFailed(int domain, int code, const QString &error);
    //! The user has done something with the page.
    Q_INVOKABLE void inputGiven();
    Q_INVOKABLE void loadStopped();
    //! What a page writes to its console: for its authors, who switch the category vant.web.page
    //! on.
    Q_INVOKABLE void consoleMessage(const QString &message, int line, const QString &source);
    Q_INVOKABLE void renderProcessTerminated(int exitCode);
    //! Whether a certificate that the engine refuses is signed by an authority the deployment adds.
    Q_INVOKABLE bool trustsCertificate(const QVariant &error) const;

Q_SIGNALS:
    void urlChanged();
    //! A view of the new profile has taken the place of the one before.
    void profileChanged();
    // For the view.
    void loadRequested(const QUrl &url);
    void htmlRequested(const QString &html);
    void reloadRequested();
    void stopRequested();
    void historyStepRequested(int offset);
    //! \a id: 0 where nobody waits for the result.
    void scriptRequested(int id, const QString &script);
    void recreateRequested();
    void viewportRead();
    // For the controller.
    void didFinishNavigation();
    void didFailNavigation(const LoadProblem &problem);
    //! A load has ended in any way, or another has taken its place.
    void loadEnded();
    void documentGone();

private:
    void schedule(std::function<void()> load);
    void makePendingLoad();
    bool endLoad();
    void fail(const LoadProblem &problem, const QString &detail);
    void endHungPage();
    void endEvaluations();
    QWebEngineHistory *history() const;
    int historyIndex() const;
    void readViewport();
    void applyPolicy(const QUrl &url, NavigationPolicy::Target target);

    QQuickWebEngineProfile *m_profile;
    QObject *m_bridge;
    PageHost *m_host;
    PageDialogs m_dialogs;
    PageDownloads m_downloads;
    LoadWatch m_loading;
    PageTravel m_travel;
    AnswerWatch m_answers;
    QUrl m_url;
    QPointer<QObject> m_view; // the engine's
    std::function<void()> m_pendingLoad; // the last one asked for in this turn
    bool m_loadStarted = false; // of the load asked for last
    bool m_loadAwaited = false; // one was asked for and has not ended
    bool m_answerAwaited = false; // a load has started, and its server has not answered
    int m_loads = 0; // that have started
    bool m_documentAwaited = false; // a load has started, and the page is still the one before
    bool m_hasPage = false;
    bool m_needsNewView = false; // the one there is dead, or has a history that must go
    bool m_profileIsNew = false;
    QString m_viewport; // what the page says of its width
    OpenedWindows m_windows;
    QHash<int, Evaluated> m_evaluations;
    int m_lastEvaluation = 0;
    bool m_diedSinceLoad = false;
};
