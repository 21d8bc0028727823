#include "support/PageServer.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"

#include <QJsonDocument>
#include <QSignalSpy>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// What a page of the widespread contract begins with.
constexpr auto iframeSetup = R"(
function setupWebViewJavascriptBridge(callback) {
    if (window.WebViewJavascriptBridge) { return callback(WebViewJavascriptBridge); }
    if (window.WVJBCallbacks) { return window.WVJBCallbacks.push(callback); }
    window.WVJBCallbacks = [callback];
    var frame = document.createElement('iframe');
    frame.style.display = 'none';
    frame.src = '%1';
    document.documentElement.appendChild(frame);
    setTimeout(function() { document.documentElement.removeChild(frame) }, 0);
}
setupWebViewJavascriptBridge(function(bridge) { bridge.callHandler('hello', {form: '%1'}); });
)";

QByteArray page(const QByteArray &script)
{
    return "<!doctype html><meta charset=utf-8><title>t</title><script>" + script + "</script>";
}

}

class BridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void payloadsArriveAsWhatTheyAre_data();
    void payloadsArriveAsWhatTheyAre();
    void everyWayToAskForTheBridgeWorks_data();
    void everyWayToAskForTheBridgeWorks();
    void theShellCallsThePage();
    void aCallIntoThePageWaitsForADocument();
    void aLateAnswerNeverReachesTheNextDocument();
    void framesAndForeignOriginsAreNotServed();
    void aDeadRendererComesBackWithItsPageAndItsBridge();
    void aThousandCallsInFlightAreEachAnsweredOnce();

private:
    PageServer m_server;
};

void BridgeTest::payloadsArriveAsWhatTheyAre_data()
{
    QTest::addColumn<QByteArray>("argument"); // of callHandler, after the name
    QTest::addColumn<QByteArray>("received"); // by the shell, as JSON in a list; empty: absent
    const QByteArray big = '"' + QByteArray(300'000, 'x') + '"';
    const auto row = [](const char *name, const QByteArray &argument, const QByteArray &received) {
        QTest::newRow(name) << argument << received;
    };
    row("object", R"(,{"a":[1,{"b":null}]})", R"([{"a":[1,{"b":null}]}])");
    row("array", ",[1,2]", "[[1,2]]");
    row("string", ",'1'", R"(["1"])");
    row("number", ",1.5", "[1.5]");
    row("zero", ",0", "[0]");
    row("false", ",false", "[false]");
    row("empty string", ",''", R"([""])");
    row("null", ",null", "[null]");
    row("absent", "", "");
    row("undefined", ",undefined", "");
    row("not ASCII", R"(,'\u2028<b>"\\\u957f\ud83d\ude00')",
        "[\"\xe2\x80\xa8<b>\\\"\\\\\xe9\x95\xbf\xf0\x9f\x98\x80\"]");
    row("big", "," + big, '[' + big + ']');
}

void BridgeTest::payloadsArriveAsWhatTheyAre()
{
    QFETCH(QByteArray, argument);
    QFETCH(QByteArray, received);
    m_server.setPage("/types.html",
        page("WebViewJavascriptBridge.callHandler('echo'" + argument
            + ", answer => { window.answer = answer === undefined ? '' : JSON.stringify([answer]) })"));
    PageHarness harness;
    std::optional<QJsonValue> data;
    harness.bridge.registerHandler(
        u"echo"_s, [&data](const QJsonValue &payload, const auto &respond) {
            data = payload;
            respond(payload);
        });
    QVERIFY(harness.load(m_server.url("/types.html")));
    QTRY_VERIFY(data.has_value());
    const QJsonArray wanted = QJsonDocument::fromJson(received).array();
    QCOMPARE(*data, received.isEmpty() ? QJsonValue(QJsonValue::Undefined) : wanted.at(0));
    QTRY_VERIFY(harness.evaluate(u"window.answer"_s).isValid());
    const QByteArray answer = harness.evaluate(u"window.answer"_s).toString().toUtf8();
    QCOMPARE(QJsonDocument::fromJson(answer).array(), wanted);
}

void BridgeTest::everyWayToAskForTheBridgeWorks_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("hidden frame") << QByteArray(iframeSetup).replace("%1", "https://__bridge_loaded__");
    QTest::newRow("older hidden frame")
        << QByteArray(iframeSetup).replace("%1", "wvjbscheme://__BRIDGE_LOADED__");
    QTest::newRow("callbacks left without asking")
        << QByteArray("window.WVJBCallbacks = [bridge => bridge.callHandler('hello', {})];");
    QTest::newRow("callbacks pushed")
        << QByteArray("window.WVJBCallbacks = []; window.WVJBCallbacks.push(bridge => "
                      "bridge.callHandler('hello', {}));");
    QTest::newRow("ready event")
        << QByteArray("document.addEventListener('WebViewJavascriptBridgeReady', event => "
                      "{ event.bridge.init(); event.bridge.callHandler('hello', {}) });");
    QTest::newRow("at once") << QByteArray("WebViewJavascriptBridge.callHandler('hello', {})");
}

void BridgeTest::everyWayToAskForTheBridgeWorks()
{
    QFETCH(QByteArray, script);
    m_server.setPage("/setup.html", page(script));
    PageHarness harness;
    int calls = 0;
    harness.bridge.registerHandler(u"hello"_s, [&calls](const QJsonValue &, const auto &) { ++calls; });
    QSignalSpy failed(&harness.webView, &WebView::didFailNavigation);
    QVERIFY(harness.load(m_server.url("/setup.html")));
    QTRY_COMPARE(calls, 1);
    QCOMPARE(harness.webView.url(), QUrl(m_server.url("/setup.html")));
    // Whatever the hidden frame asked for must not have become a failed page or a second call.
    QCOMPARE(harness.evaluate(u"document.title"_s).toString(), u"t"_s);
    QCOMPARE(calls, 1);
    QCOMPARE(failed.count(), 0);
}

void BridgeTest::theShellCallsThePage()
{
    m_server.setPage("/called.html",
        page("WebViewJavascriptBridge.registerHandler('boom', () => { throw new Error('no') });"
             "WebViewJavascriptBridge.registerHandler('double', (data, respond) => respond(data * 2));"));
    PageHarness harness;
    QVERIFY(harness.load(m_server.url("/called.html")));
    QJsonValue answer;
    harness.bridge.callHandler(u"nobody"_s, 1);
    // A handler that fails takes no other call with it.
    harness.bridge.callHandler(u"boom"_s, 1);
    harness.bridge.callHandler(u"double"_s, 21, [&answer](const QJsonValue &value) { answer = value; });
    QTRY_COMPARE(answer, QJsonValue(42));
}

void BridgeTest::aCallIntoThePageWaitsForADocument()
{
    m_server.setPage("/waits.html",
        page("WebViewJavascriptBridge.registerHandler('late', data => { window.late = data });"));
    PageHarness harness;
    harness.bridge.callHandler(u"late"_s, u"kept"_s);
    QVERIFY(harness.load(m_server.url("/waits.html")));
    QTRY_COMPARE(harness.evaluate(u"window.late"_s).toString(), u"kept"_s);
}

void BridgeTest::aLateAnswerNeverReachesTheNextDocument()
{
    const QByteArray caller = page("window.answers = [];"
                                   "WebViewJavascriptBridge.callHandler('slow', location.pathname, "
                                   "answer => window.answers.push(answer))");
    m_server.setPage("/one.html", caller);
    m_server.setPage("/two.html", caller);
    PageHarness harness;
    QList<WebViewJavascriptBridge::Respond> responds;
    harness.bridge.registerHandler(u"slow"_s,
        [&responds](const QJsonValue &, const auto &respond) { responds << respond; });
    QVERIFY(harness.load(m_server.url("/one.html")));
    QTRY_COMPARE(responds.size(), 1);
    QVERIFY(harness.load(m_server.url("/two.html")));
    QTRY_COMPARE(responds.size(), 2);
    responds[0](u"for one"_s);
    responds[1](u"for two"_s);
    QTRY_COMPARE(harness.evaluate(u"window.answers.join()"_s).toString(), u"for two"_s);
}

void BridgeTest::framesAndForeignOriginsAreNotServed()
{
    PageServer foreign("127.0.0.2");
    m_server.setPage("/inner.html",
        page("parent.inner = typeof WebViewJavascriptBridge + typeof (window.qt || {}).webChannelTransport"));
    m_server.setPage("/outer.html",
        page("WebViewJavascriptBridge.callHandler('hello', 'trusted')")
            + "<iframe src=/inner.html></iframe>");
    foreign.setPage("/foreign.html", page("WebViewJavascriptBridge.callHandler('hello', 'foreign')"));

    PageHarness *harnessOf = nullptr;
    const QUrl trusted(m_server.url("/"));
    PageHarness harness([&](const QString &origin) {
        return QUrl(origin).authority() == trusted.authority()
            && harnessOf->webView.url().authority() == trusted.authority();
    });
    harnessOf = &harness;
    QStringList heard;
    harness.bridge.registerHandler(u"hello"_s,
        [&heard](const QJsonValue &data, const auto &) { heard << data.toString(); });

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"does not serve pages of"_s));
    QVERIFY(harness.load(foreign.url("/foreign.html")));
    QVERIFY(harness.load(m_server.url("/outer.html")));
    QTRY_COMPARE(heard, QStringList {u"trusted"_s});
    QTRY_COMPARE(harness.evaluate(u"window.inner"_s).toString(), u"undefinedundefined"_s);
}

void BridgeTest::aDeadRendererComesBackWithItsPageAndItsBridge()
{
    m_server.setPage("/dies.html",
        page("WebViewJavascriptBridge.callHandler('hello', 1, answer => { window.answer = answer })"));
    PageHarness harness;
    int calls = 0;
    harness.bridge.registerHandler(u"hello"_s, [&calls](const QJsonValue &, const auto &respond) {
        ++calls;
        respond(u"here"_s);
    });
    QVERIFY(harness.load(m_server.url("/dies.html")));
    QTRY_COMPARE(calls, 1);

    QSignalSpy gone(&harness.webView, &WebView::documentGone);
    QSignalSpy finished(&harness.webView, &WebView::didFinishNavigation);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the page's process has ended"_s));
    const qint64 renderer = harness.rendererPid();
    QVERIFY(renderer > 0);
    ::kill(pid_t(renderer), SIGKILL);
    QVERIFY(gone.wait(20'000));
    QVERIFY(finished.count() > 0 || finished.wait(20'000));
    QTRY_COMPARE(calls, 2);
    QTRY_COMPARE(harness.evaluate(u"window.answer"_s).toString(), u"here"_s);
    QCOMPARE(harness.webView.url(), QUrl(m_server.url("/dies.html")));
}

void BridgeTest::aThousandCallsInFlightAreEachAnsweredOnce()
{
    m_server.setPage("/many.html",
        page("window.sum = 0; window.count = 0;"
             "for (let i = 1; i <= 1000; ++i)"
             "  WebViewJavascriptBridge.callHandler('echo', i, n => { sum += n; ++count });"));
    PageHarness harness;
    int batches = 0;
    harness.bridge.registerHandler(
        u"echo"_s, [](const QJsonValue &data, const auto &respond) { respond(data); });
    QObject::connect(&harness.bridge, &WebViewJavascriptBridge::toPage, &harness.bridge,
        [&batches] { ++batches; });
    QVERIFY(harness.load(m_server.url("/many.html")));
    QTRY_COMPARE(harness.evaluate(u"window.sum"_s).toInt(), 500'500);
    QCOMPARE(harness.evaluate(u"window.count"_s).toInt(), 1000);
    // Answers that are ready at once need no message of their own.
    QCOMPARE(batches, 0);
}

VANT_WEB_TEST_MAIN(BridgeTest)
#include "BridgeTest.moc"
