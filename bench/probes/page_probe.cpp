// Preloaded into a program: says when the first web view of its window has loaded a page of the
// path BENCH_PAGE.

#include "Report.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <QWebEngineLoadingInfo>

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 2ms;

QQuickItem *webView(QQuickItem *item)
{
    if (item->inherits("QQuickWebEngineView"))
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *view = webView(child))
            return view;
    }
    return nullptr;
}

class PageProbe : public QObject
{
    Q_OBJECT

public:
    explicit PageProbe(QObject *parent)
        : QObject(parent)
        , m_page(qEnvironmentVariable("BENCH_PAGE"))
    {
        connect(&m_look, &QTimer::timeout, this, &PageProbe::look);
        m_look.start(lookInterval);
    }

private Q_SLOTS:
    void loadingChanged(const QWebEngineLoadingInfo &info)
    {
        const bool isLoaded = info.status() == QWebEngineLoadingInfo::LoadSucceededStatus;
        if (isLoaded && info.url().path() == m_page && !std::exchange(m_isDone, true))
            report("loaded");
    }

private:
    void look()
    {
        for (QWindow *window : QGuiApplication::allWindows()) {
            const auto *quick = qobject_cast<QQuickWindow *>(window);
            QQuickItem *view = quick ? webView(quick->contentItem()) : nullptr;
            if (!view)
                continue;
            m_look.stop();
            connect(view, SIGNAL(loadingChanged(QWebEngineLoadingInfo)), this,
                SLOT(loadingChanged(QWebEngineLoadingInfo)));
            return;
        }
    }

    QString m_page;
    QTimer m_look;
    bool m_isDone = false;
};

void install()
{
    // Not for the children.
    qunsetenv("LD_PRELOAD");
    new PageProbe(QCoreApplication::instance());
}

}

Q_COREAPP_STARTUP_FUNCTION(install)

#include "page_probe.moc"
