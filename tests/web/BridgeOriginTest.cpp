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

//! Of somebody who tries the bridge.
struct Visit
{
    QByteArray address;
    bool served = false;
    QByteArray early {}; //!< what the attacking page does first
    QByteArray late {}; //!< and last
    QByteArray way {}; //!< from the address to the attacking page, as a script
    bool named = true; //!< the trusted one is
};

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
        QFETCH(const Visit, visit);
        servePages(visit.early, visit.late);
        HomeHarness &home = visit.named ? m_named : m_open;
        QStringList colors;
        QObject context;
        connect(&home.controller, &STHomeViewController::statusBarColorChanged, &context,
            [&] { colors << home.controller.statusColor; });
        QVERIFY(load(home, QString::fromUtf8(visit.address)));
        if (!visit.way.isEmpty()) {
            home.evaluate(QString::fromUtf8(visit.way) + u"; 0"_s);
            QVERIFY(home.waitForPage(u"done"_s));
        }
        // The second comes after every answer to what was sent before the first.
        home.evaluate(u"got"_s);
        const auto got = [&home] { return home.evaluate(u"got"_s).toStringList(); };
        TRY_COMPARE(got().contains(u"answer"), visit.served);
        QVERIFY(!got().contains(u"transport"));
        QVERIFY(load(home, m_trusted.url("/calm.html")));
        TRY_VERIFY(colors.contains(u"#123456"));
        QCOMPARE(colors.contains(u"#ff0000"), visit.served);
    }
};

void BridgeOriginTest::servesThoseWhoAreTrusted_data()
{
    QTest::addColumn<Visit>("visit");
    const auto row = [](const char *name, const Visit &visit) { QTest::newRow(name) << visit; };
    const QByteArray page = foreign("/attack.html");
    row("trusted", {trusted("/attack.html"), true});
    row("trusted XHTML", {trusted("/attack.xhtml"), true});
    row("trusted SVG", {trusted("/attack.svg"), true});
    row("nobody is named", {page, true, {}, {}, {}, false});
    row("nobody is named, no origin", {trusted("/sandboxed.html"), true, {}, {}, {}, false});

    row("foreign", {page});
    row("join", {page, false, {}, "Array.prototype.join = function () { return forge(2); };"});
    for (const char *owner : {"Array.prototype", "JSON", "Map.prototype", "Promise.prototype",
             "EventTarget.prototype", "Event.prototype", "Object", "String.prototype", "document"})
        row(owner, {page, false, {}, "patch(" + QByteArray(owner) + ");"});
    row("classes",
        {page, false, {},
            "['Map', 'Promise', 'CustomEvent', 'EventTarget'].forEach("
            "  function (name) { window[name] = function () { return forge(2); } });"
            "document.dispatchEvent = Object.defineProperty = function () { return forge(2); };"});
    // Their scripts run before the bridge's.
    const QByteArray forgedNames = "JSON.stringify = function (value) {"
                                   "  return value === 'changeStatusColor' ? forge(3)"
                                   "    : typeof value === 'string' ? '\"x\"' : undefined; };";
    row("XHTML", {foreign("/attack.xhtml"), false, forgedNames});
    row("SVG", {foreign("/attack.svg"), false, forgedNames});
    row("sandboxed", {trusted("/sandboxed.html")});
    row("data", {"data:text/html," + htmlOf(attack).toPercentEncoding()});
    row("redirect", {trusted("/redirect")});

    const auto frame = [](const QByteArray &url) {
        return "document.body.appendChild(document.createElement('iframe')).src = '" + url + "'";
    };
    const QByteArray start = trusted("/start.html");
    row("frame", {start, false, {}, {}, frame(page)});
    row("frame of the trusted origin", {start, false, {}, {}, frame(trusted("/attack.html"))});
    row("new window", {start, false, {}, {}, "window.open('" + page + "')"});
    row("javascript", {foreign("/text.html"), false, {}, {}, "location.href = 'javascript:text'"});
    row("back in the history",
        {foreign("/begin.html"), false, {}, {},
            "sessionStorage.been = 1; location.href = '" + trusted("/back.html") + "'"});
}

VANT_WEB_TEST_MAIN(BridgeOriginTest)
#include "BridgeOriginTest.moc"
