#include "support/PageServer.h"
#include "support/Patience.h"
#include "web/HomeHarness.h"
#include "web/WebTestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

// Takes what it can get, whenever it can, and says so in "got"; titled "done" in the end.
const QByteArray attack = R"(
    var got = [];
    function take(what) { got[got.length] = what; }
    function reach() {
        if (window.qt)
            take('transport');
        try {
            WebViewJavascriptBridge.callHandler('changeStatusColor', { color: '#ff0000' });
            WebViewJavascriptBridge.callHandler('detectOnline', function () { take('answer'); });
        } catch (error) { }
    }
    function tell() {
        document.title = 'done';
        if (parent !== window)
            parent.postMessage(got, '*');
    }
    reach();
    window.WVJBCallbacks = [reach];
    document.addEventListener('WebViewJavascriptBridgeReady', reach);
    addEventListener('DOMContentLoaded', reach);
    addEventListener('load', function () { reach(); setTimeout(tell); });
)";

// Texts that would leave their place, so many brackets deep, in a message to the shell: first
// another document of the trusted origin begins, then it calls.
const QByteArray forgery = R"(
    var forgeries = 0;
    function forge(brackets) {
        var message = forgeries++ % 2 === 0 ? '"method":%1,"args":["x","%3"]'
            : '"method":%2,"args":["x",[["changeStatusColor",0,{"color":"#ff0000"}]]]';
        return '0' + ']'.repeat(brackets) + ',' + message + ',"y":' + '['.repeat(brackets) + '0';
    }
    function patch(owner) {
        Object.getOwnPropertyNames(owner).forEach(function (name) {
            try {
                if (typeof owner[name] === 'function')
                    owner[name] = function () { return forge(2); };
            } catch (error) { }
        });
    }
)";

QByteArray methodNumber(const char *method)
{
    return QByteArray::number(WebViewJavascriptBridge::staticMetaObject.indexOfMethod(method));
}

QByteArray htmlOf(const QByteArray &script)
{
    return "<!doctype html><title>page</title><body><script>" + script + "</script>";
}

QByteArray xmlOf(const QByteArray &root, const QByteArray &script)
{
    return '<' + root + "><title>page</title><script>//<![CDATA[\n" + script + "\n//]]></script></"
        + root.left(root.indexOf(' ')) + '>';
}

const QByteArray xhtml = "html xmlns='http://www.w3.org/1999/xhtml'";
const QByteArray svg = "svg xmlns='http://www.w3.org/2000/svg'";

}

//! Whom the bridge serves where an operator names the trusted origins.
class BridgeOriginTest : public QObject
{
    Q_OBJECT

private:
    PageServer m_trusted;
    PageServer m_foreign {"127.0.0.2"};
    HomeHarness m_named {{m_trusted.url({})}};
    HomeHarness m_open;

    QByteArray trusted(const QByteArray &path = {}) const { return m_trusted.url(path).toUtf8(); }
    QByteArray foreign(const QByteArray &path) const { return m_foreign.url(path).toUtf8(); }
    QByteArray forging() const
    {
        return QByteArray(forgery)
            .replace("%1", methodNumber("begin(QString,QString)"))
            .replace("%2", methodNumber("receive(QString,QJsonArray)"))
            .replace("%3", trusted());
    }

    static bool load(HomeHarness &home, const QString &url)
    {
        QSignalSpy finished(home.controller.webView(), &WebView::didFinishNavigation);
        home.controller.webView()->load(QUrl(url));
        return finished.wait(patienceMs);
    }

    void servePages(const QByteArray &early, const QByteArray &late)
    {
        const QByteArray script = forging() + early + attack + late;
        for (PageServer *server : {&m_trusted, &m_foreign}) {
            server->setPage("/attack.html", htmlOf(script));
            server->setPage("/attack.xhtml", xmlOf(xhtml, script), "application/xhtml+xml");
            server->setPage("/attack.svg", xmlOf(svg, script), "image/svg+xml");
        }
        m_trusted.setPage("/start.html",
            htmlOf("addEventListener('message', function (event) {"
                   "  window.got = event.data;"
                   "  document.title = 'done'; })"));
        m_trusted.setPage("/sandboxed.html", htmlOf(script), "text/html",
            {"Content-Security-Policy: sandbox allow-scripts"});
        m_trusted.setPage("/redirect", {}, "text/html", {"Location: " + foreign("/attack.html")});
        m_trusted.setPage("/back.html", htmlOf("setTimeout(function () { history.back() }, 100)"));
        m_trusted.setPage("/calm.html",
            htmlOf("document.title = 'calm';"
                   "WVJBCallbacks = [function (bridge) {"
                   "  bridge.callHandler('changeStatusColor', { color: '#123456' }) }]"));
        const QByteArray text
            = QJsonDocument(QJsonArray {QString::fromUtf8(htmlOf(attack)).replace(u'<', u'\x01')})
                  .toJson(QJsonDocument::Compact);
        m_foreign.setPage(
            "/text.html", htmlOf("var text = " + text + "[0].replaceAll('\\u0001', '<');"));
        m_foreign.setPage("/begin.html",
            htmlOf("if (sessionStorage.been) { document.title = 'again'; " + script + "}"));
    }

private Q_SLOTS:
    void initTestCase()
    {
        for (HomeHarness *home : {&m_named, &m_open}) {
            home->setPortal(m_trusted.url("/start.html"));
            home->show();
        }
    }

    void servesThoseWhoAreTrusted_data();

    void servesThoseWhoAreTrusted()
    {
        QFETCH(const QByteArray, address);
        QFETCH(const QByteArray, way);
        QFETCH(const QByteArray, early);
        QFETCH(const QByteArray, late);
        QFETCH(const bool, named);
        QFETCH(const bool, served);
        servePages(early, late);
        HomeHarness &home = named ? m_named : m_open;
        QStringList colors;
        QObject context;
        connect(&home.controller, &STHomeViewController::statusBarColorChanged, &context,
            [&] { colors << home.controller.statusColor; });
        QVERIFY(load(home, QString::fromUtf8(address)));
        if (!way.isEmpty()) {
            home.evaluate(QString::fromUtf8(way) + u"; 0"_s);
            QVERIFY(home.waitForPage(u"done"_s));
        }
        // The second comes after every answer to what was sent before the first.
        home.evaluate(u"got"_s);
        const auto got = [&home] { return home.evaluate(u"got"_s).toStringList(); };
        TRY_COMPARE(got().contains(u"answer"), served);
        QVERIFY(!got().contains(u"transport"));
        QVERIFY(load(home, m_trusted.url("/calm.html")));
        TRY_VERIFY(colors.contains(u"#123456"));
        QCOMPARE(colors.contains(u"#ff0000"), served);
    }
};

void BridgeOriginTest::servesThoseWhoAreTrusted_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<QByteArray>("way"); // from there to the attacking page, as a script
    QTest::addColumn<QByteArray>("early"); // what the attacking page does first
    QTest::addColumn<QByteArray>("late"); // and last
    QTest::addColumn<bool>("named"); // the trusted one is
    QTest::addColumn<bool>("served");
    const auto row = [](const char *name, const QByteArray &address, bool served,
                         const QByteArray &early = {}, const QByteArray &late = {}) {
        QTest::newRow(name) << address << QByteArray() << early << late << true << served;
    };
    const QByteArray page = foreign("/attack.html");
    row("trusted", trusted("/attack.html"), true);
    row("trusted XHTML", trusted("/attack.xhtml"), true);
    row("trusted SVG", trusted("/attack.svg"), true);
    const auto everybody = [](const char *name, const QByteArray &address) {
        QTest::newRow(name) << address << QByteArray() << QByteArray() << QByteArray() << false
                            << true;
    };
    everybody("nobody is named", page);
    everybody("nobody is named, no origin", trusted("/sandboxed.html"));

    row("foreign", page, false);
    row("join", page, false, {}, "Array.prototype.join = function () { return forge(2); };");
    for (const char *owner : {"Array.prototype", "JSON", "Map.prototype", "Promise.prototype",
             "EventTarget.prototype", "Event.prototype", "Object", "String.prototype", "document"})
        row(owner, page, false, {}, "patch(" + QByteArray(owner) + ");");
    row("classes", page, false, {},
        "['Map', 'Promise', 'CustomEvent', 'EventTarget'].forEach("
        "  function (name) { window[name] = function () { return forge(2); } });"
        "document.dispatchEvent = Object.defineProperty = function () { return forge(2); };");
    // Their scripts run before the bridge's.
    const QByteArray forgedNames = "JSON.stringify = function (value) {"
                                   "  return value === 'changeStatusColor' ? forge(3)"
                                   "    : typeof value === 'string' ? '\"x\"' : undefined; };";
    row("XHTML", foreign("/attack.xhtml"), false, forgedNames);
    row("SVG", foreign("/attack.svg"), false, forgedNames);
    row("sandboxed", trusted("/sandboxed.html"), false);
    row("data", "data:text/html," + htmlOf(attack).toPercentEncoding(), false);
    row("redirect", trusted("/redirect"), false);

    const auto gone = [&](const char *name, const QByteArray &address, const QByteArray &way) {
        QTest::newRow(name) << address << way << QByteArray() << QByteArray() << true << false;
    };
    const auto frame = [](const QByteArray &url) {
        return "document.body.appendChild(document.createElement('iframe')).src = '" + url + "'";
    };
    const QByteArray start = trusted("/start.html");
    gone("frame", start, frame(page));
    gone("frame of the trusted origin", start, frame(trusted("/attack.html")));
    gone("new window", start, "window.open('" + page + "')");
    gone("javascript", foreign("/text.html"), "location.href = 'javascript:text'");
    gone("back in the history", foreign("/begin.html"),
        "sessionStorage.been = 1; location.href = '" + trusted("/back.html") + "'");
}

VANT_WEB_TEST_MAIN(BridgeOriginTest)
#include "BridgeOriginTest.moc"
