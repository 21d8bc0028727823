#include "web/PageHarness.h"

#include "support/Patience.h"

#include <QQuickItem>
#include <QRegularExpression>
#include <QSignalSpy>

#include <csignal>

using namespace Qt::StringLiterals;

QVariant evaluateIn(WebView &webView, const QString &script)
{
    // Shared: a result that comes after the wait must still find its place.
    const auto result = std::make_shared<std::optional<QVariant>>();
    webView.evaluateJavaScript(script, [result](const QVariant &value) { *result = value; });
    if (!waitFor([&result] { return result->has_value(); }))
        qWarning("the script gave no result");
    return result->value_or(QVariant());
}

bool waitForTitle(WebView &webView, const QString &title)
{
    const QString shown = u"document.readyState == 'complete' ? document.title : ''"_s;
    return waitFor([&] { return evaluateIn(webView, shown) == title; });
}

PageHarness::PageHarness(WebViewJavascriptBridge::Trust trust)
    : cookies(folder.filePath(u"cookies.json"_s))
    , profile(
          u"test"_s, folder.path(), u"VANT-IOS iphone"_s, &cookies, WebCookieStore::Direction::Both)
    , bridge(std::move(trust))
    , webView(profile.engineProfile(), &bridge, &pageHost)
{
    profile.addBridge();
    QObject::connect(
        &webView, &WebView::documentGone, &bridge, &WebViewJavascriptBridge::documentGone);
    window.engine()->addImportPath(u"qrc:/qt/qml"_s);
    window.setInitialProperties({{u"webView"_s, QVariant::fromValue(&webView)}});
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.resize(390, 844);
    window.setSource(QUrl(u"qrc:/qt/qml/Vant/Web/WebPage.qml"_s));
    window.show();
}

QString PageHarness::page(const QByteArray &content, const QByteArray &path)
{
    server.setPage(path, "<!doctype html><meta charset=utf-8>" + content);
    return server.url(path);
}

QString PageHarness::host() const
{
    return u"127.0.0.1:%1"_s.arg(server.port());
}

bool PageHarness::load(const QString &url)
{
    QSignalSpy finished(&webView, &WebView::didFinishNavigation);
    webView.load(QUrl(url));
    return finished.wait(patienceMs);
}

QVariant PageHarness::evaluate(const QString &script)
{
    return evaluateIn(webView, script);
}

void PageHarness::killRenderer()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the page's process has ended"_s));
    for (const QObject *item : window.rootObject()->findChildren<QQuickItem *>()) {
        const pid_t pid = pid_t(item->property("renderProcessPid").toLongLong());
        if (pid > 0)
            ::kill(pid, SIGKILL);
    }
}
