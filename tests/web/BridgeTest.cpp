#include "support/PageServer.h"
#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"

#include <QJsonDocument>
#include <QSignalSpy>

#include <csignal>

using namespace Qt::StringLiterals;

//! The bridge between page and shell.
class BridgeTest : public QObject
{
    Q_OBJECT

private:
    PageServer m_server;

    QString page(const QByteArray &script, const QByteArray &path = "/page.html")
    {
        m_server.setPage(path,
            "<!doctype html><meta charset=utf-8><script>WVJBCallbacks = [() => {" + script
                + "}]</script>");
        return m_server.url(path);
    }

private Q_SLOTS:
    void payloadsArriveAsWhatTheyAre_data();

    void payloadsArriveAsWhatTheyAre()
    {
        QFETCH(const QByteArray, argument);
        QFETCH(const QByteArray, received);
        PageHarness harness;
        std::optional<QJsonValue> data;
        harness.bridge.registerHandler(
            u"echo"_s, [&data](const QJsonValue &payload, const auto &respond) {
                data = payload;
                respond(payload);
            });
        QVERIFY(harness.load(page("WebViewJavascriptBridge.callHandler('echo'" + argument
            + ", answer => { window.answer = answer === undefined ? ''"
              "  : JSON.stringify([answer]) })")));
        TRY_VERIFY(harness.evaluate(u"window.answer"_s).isValid());
        const QJsonArray wanted = QJsonDocument::fromJson(received).array();
        QCOMPARE(*data, received.isEmpty() ? QJsonValue(QJsonValue::Undefined) : wanted.at(0));
        const QByteArray answer = harness.evaluate(u"window.answer"_s).toString().toUtf8();
        QCOMPARE(QJsonDocument::fromJson(answer).array(), wanted);
    }

    void theShellCallsTheDocumentThatItMeans()
    {
        const QString address = page(
            "WebViewJavascriptBridge.registerHandler('boom', () => { throw new Error('no') });"
            "WebViewJavascriptBridge.registerHandler('double', (data, respond) =>"
            "  respond(data * 2));"
            "WebViewJavascriptBridge.callHandler('here');");
        PageHarness harness;
        QStringList documents;
        harness.bridge.registerHandler(u"here"_s,
            [&](const QJsonValue &, const auto &) { documents << harness.bridge.document(); });
        QJsonArray answers;
        const auto ask = [&](const QString &document, int number) {
            harness.bridge.callHandler(document, u"double"_s, number,
                [&answers](const QJsonValue &value) { answers << value; });
        };
        QVERIFY(harness.load(address));
        TRY_COMPARE(documents.size(), 1);
        harness.bridge.callHandler(documents[0], u"nobody"_s, 1);
        // A handler that fails takes no other call with it.
        harness.bridge.callHandler(documents[0], u"boom"_s, 1);
        ask(documents[0], 21);
        TRY_COMPARE(answers, QJsonArray {42});
        QVERIFY(harness.load(address));
        TRY_COMPARE(documents.size(), 2);
        ask(documents[0], 1);
        ask({}, 2);
        ask(documents[1], 3);
        TRY_COMPARE(answers, (QJsonArray {42, 6}));
    }

    void aLateAnswerNeverReachesTheNextDocument()
    {
        const QByteArray caller = "window.answers = [];"
                                  "WebViewJavascriptBridge.callHandler('slow', null,"
                                  "  answer => window.answers.push(answer))";
        PageHarness harness;
        QList<WebViewJavascriptBridge::Respond> responds;
        harness.bridge.registerHandler(u"slow"_s,
            [&responds](const QJsonValue &, const auto &respond) { responds << respond; });
        for (const char *path : {"/one.html", "/two.html"}) {
            QVERIFY(harness.load(page(caller, path)));
            TRY_COMPARE(responds.size(), path == "/one.html"_ba ? 1 : 2);
        }
        responds[0](u"for one"_s);
        responds[1](u"for two"_s);
        TRY_COMPARE(harness.evaluate(u"window.answers.join()"_s).toString(), u"for two"_s);
    }

    void anAnswerOnItsWayIsLostWithItsDocument()
    {
        WebViewJavascriptBridge bridge([](const QString &) { return true; });
        WebViewJavascriptBridge::Respond respond;
        bridge.registerHandler(
            u"slow"_s, [&respond](const QJsonValue &, const auto &later) { respond = later; });
        QJsonArray call;
        call.append(QJsonArray {u"slow"_s, 1});
        bridge.begin(u"one"_s, {});
        bridge.receive(u"one"_s, call);
        respond(u"for one"_s);
        bridge.begin(u"two"_s, {});
        // It is not on the page any more.
        QCOMPARE(bridge.receive(u"one"_s, call), QVariantList());
        respond(u"for nobody"_s);
        QCOMPARE(bridge.receive(u"two"_s, {}), QVariantList());
    }

    void whoWaitsForTheBridgeGetsItOnceTheDocumentIsParsed_data()
    {
        QTest::addColumn<QByteArray>("wait");
        QTest::addColumn<bool>("isXhtml");
        const QByteArray list = "if (window.WVJBCallbacks) return WVJBCallbacks.push(callback);"
                                "window.WVJBCallbacks = [callback];";
        const QByteArray frame = list
            + "var frame = document.createElement('iframe');"
              "frame.style.display = 'none'; frame.src = '%1';"
              "document.documentElement.appendChild(frame);"
              "setTimeout(function () { document.documentElement.removeChild(frame) }, 0);";
        const QByteArray event = "document.addEventListener('WebViewJavascriptBridgeReady',"
                                 "  function (event) { callback(event.bridge) }, false);";
        for (const bool isXhtml : {false, true}) {
            const auto row = [isXhtml](const char *name, const QByteArray &wait) {
                QTest::addRow("%s%s", name, isXhtml ? ", XHTML" : "") << wait << isXhtml;
            };
            row("list", list);
            row("frame", QByteArray(frame).replace("%1", "https://__bridge_loaded__"));
            row("older frame", QByteArray(frame).replace("%1", "wvjbscheme://__BRIDGE_LOADED__"));
            row("event", event);
        }
    }

    void whoWaitsForTheBridgeGetsItOnceTheDocumentIsParsed()
    {
        QFETCH(const QByteArray, wait);
        QFETCH(const bool, isXhtml);
        const auto script = [](const QByteArray &text) {
            return "<script>//<![CDATA[\n" + text + "\n//]]></script>";
        };
        const QByteArray content = "<html xmlns='http://www.w3.org/1999/xhtml'><head>"
            + script(
                "var log = [typeof WebViewJavascriptBridge];"
                "function setup(callback) {"
                "  if (window.WebViewJavascriptBridge) return callback(WebViewJavascriptBridge);"
                + wait
                + "}"
                  "setup(function (bridge) {"
                  "  document.body.appendChild(document.createElement('p'));"
                  "  log.push(document.readyState, bridge === WebViewJavascriptBridge); });"
                  "setup(function () { throw new Error('no') });"
                  "setup(function () { log.push('second') });"
                  "addEventListener('load', function () { setup(function () { log.push('late') }) "
                  "})")
            + "</head><body>" + script("log.push(typeof WebViewJavascriptBridge)")
            + "</body></html>";
        m_server.setPage("/setup", content, isXhtml ? "application/xhtml+xml" : "text/html");
        PageHarness harness;
        QVERIFY(harness.load(m_server.url("/setup")));
        TRY_COMPARE(harness.evaluate(u"log.join()"_s).toString(),
            u"undefined,undefined,interactive,true,second,late"_s);
    }

    void aPageMayUseOurNamesForItsOwn()
    {
        PageHarness harness;
        for (const QByteArray declaration : {"let %1 = 1", "const %1 = []", "var %1 = []",
                 "function %1() { }", "class %1 { }", "window.%1 = 1"}) {
            for (const QByteArray name : {"qt", "WebViewJavascriptBridge", "WVJBCallbacks"}) {
                const QByteArray script = QByteArray(declaration).replace("%1", name);
                m_server.setPage("/late.js", script + "; window.late = typeof " + name);
                m_server.setPage("/names.html",
                    "<!doctype html><script>" + script + "; window.early = typeof " + name
                        + "</script>");
                m_server.setPage(
                    "/late.html", "<!doctype html><script defer src=/late.js></script>");
                QVERIFY(harness.load(m_server.url("/names.html")));
                const QString early = harness.evaluate(u"window.early"_s).toString();
                QVERIFY2(!early.isEmpty() && early != u"undefined", script);
                QVERIFY(harness.load(m_server.url("/late.html")));
                QVERIFY2(!harness.evaluate(u"window.late"_s).toString().isEmpty(), script);
            }
        }
    }

    void aPayloadThatTheShellCannotReadFailsAlone()
    {
        PageHarness harness;
        QJsonArray heard;
        harness.bridge.registerHandler(
            u"echo"_s, [&heard](const QJsonValue &data, const auto &respond) {
                heard << (data.isArray() ? QJsonValue(u"list"_s) : data);
                respond(data);
            });
        QVERIFY(
            harness.load(page("window.log = [];"
                              "const call = (data, respond) => {"
                              "  try { WebViewJavascriptBridge.callHandler('echo', data, respond) }"
                              "  catch (error) { log.push(error.name) } };"
                              "const nested = levels => JSON.parse("
                              "  '['.repeat(levels) + ']'.repeat(levels));"
                              "const cycle = {}; cycle.cycle = cycle;"
                              "call('first');"
                              "call(nested(1000), data => log.push(JSON.stringify(data).length));"
                              "for (const bad of [nested(1001), nested(1024), cycle, 1n])"
                              "  call(bad, () => log.push('answered'));"
                              "call('last', data => log.push(data));")));
        TRY_COMPARE(harness.evaluate(u"log.join()"_s).toString(),
            u"RangeError,RangeError,TypeError,TypeError,2000,last"_s);
        QCOMPARE(heard, (QJsonArray {u"first"_s, u"list"_s, u"last"_s}));
    }

    void aDeadRendererComesBackWithItsPageAndItsBridge()
    {
        PageHarness harness;
        int calls = 0;
        harness.bridge.registerHandler(
            u"hello"_s, [&calls](const QJsonValue &, const auto &respond) {
                ++calls;
                respond(u"here"_s);
            });
        QVERIFY(harness.load(page("WebViewJavascriptBridge.callHandler('hello', 1,"
                                  "  answer => { window.answer = answer })")));
        TRY_COMPARE(calls, 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the page's process has ended"_s));
        const qint64 renderer = harness.rendererPid();
        QVERIFY(renderer > 0);
        ::kill(pid_t(renderer), SIGKILL);
        TRY_COMPARE(calls, 2);
        TRY_COMPARE(harness.evaluate(u"window.answer"_s).toString(), u"here"_s);
    }

    void aPageThatKillsItsProcessAgainAndAgainLeavesTheBridgeToTheNext()
    {
        PageHarness harness;
        int calls = 0;
        harness.bridge.registerHandler(
            u"hello"_s, [&calls](const QJsonValue &, const auto &) { ++calls; });
        QSignalSpy failed(&harness.webView, &WebView::didFailNavigation);
        const QRegularExpression ended(u"the page's process has ended"_s);
        QTest::ignoreMessage(QtWarningMsg, ended);
        QTest::ignoreMessage(QtWarningMsg, ended);
        harness.webView.load(QUrl(u"chrome://crash"_s));
        TRY_COMPARE(failed.size(), 1);
        QVERIFY(harness.load(page("WebViewJavascriptBridge.callHandler('hello')")));
        TRY_COMPARE(calls, 1);
    }

    void aThousandCallsInFlightAreEachAnsweredOnce()
    {
        PageHarness harness;
        harness.bridge.registerHandler(
            u"echo"_s, [](const QJsonValue &data, const auto &respond) { respond(data); });
        // Answers that are ready at once need no message of their own.
        QSignalSpy batches(&harness.bridge, &WebViewJavascriptBridge::toPage);
        QVERIFY(harness.load(page("window.sum = 0; window.count = 0;"
                                  "for (let i = 1; i <= 1000; ++i)"
                                  "  WebViewJavascriptBridge.callHandler('echo', i,"
                                  "    n => { sum += n; ++count });")));
        TRY_COMPARE(harness.evaluate(u"window.sum"_s).toInt(), 500'500);
        QCOMPARE(harness.evaluate(u"window.count"_s).toInt(), 1000);
        QCOMPARE(batches.count(), 0);
    }
};

void BridgeTest::payloadsArriveAsWhatTheyAre_data()
{
    QTest::addColumn<QByteArray>("argument"); // of callHandler, after the name
    QTest::addColumn<QByteArray>("received"); // by the shell, as JSON in a list; empty: absent
    const QByteArray big = '"' + QByteArray(300'000, 'x') + '"';
    const auto row = [](const char *name, const QByteArray &argument, const QByteArray &json) {
        QTest::newRow(name) << argument << json;
    };
    row("object", R"(,{"a":[1,{"b":null}]})", R"([{"a":[1,{"b":null}]}])");
    row("string", ",'1'", R"(["1"])");
    row("zero", ",0", "[0]");
    row("false", ",false", "[false]");
    row("null", ",null", "[null]");
    row("absent", "", "");
    row("not ASCII", R"(,'\u2028<b>"\\\u957f\ud83d\ude00')",
        "[\"\xe2\x80\xa8<b>\\\"\\\\\xe9\x95\xbf\xf0\x9f\x98\x80\"]");
    row("big", "," + big, '[' + big + ']');
}

VANT_WEB_TEST_MAIN(BridgeTest)
#include "BridgeTest.moc"
