#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"

#include <QJsonDocument>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

//! The bridge between page and shell.
class BridgeTest : public QObject
{
    Q_OBJECT

private:
    using Responds = QList<WebViewJavascriptBridge::Respond>;

    std::unique_ptr<PageHarness> m_page;
    QList<QJsonValue> m_heard; //!< what reached "echo", which answers with it
    QStringList m_callers; //!< the documents that called it
    Responds m_responds; //!< the answers that "slow" owes

    // Runs the script as soon as the document has the bridge.
    bool run(const QByteArray &script, const QByteArray &path = "/page.html")
    {
        return m_page->load(
            m_page->page("<script>WVJBCallbacks = [() => {" + script + "}]</script>", path));
    }

private Q_SLOTS:
    void init()
    {
        m_page = std::make_unique<PageHarness>();
        m_heard.clear();
        m_callers.clear();
        m_responds.clear();
        m_page->bridge.registerHandler(
            u"echo"_s, [this](const QJsonValue &data, const auto &respond) {
                m_heard << data;
                m_callers << m_page->bridge.document();
                respond(data);
            });
        m_page->bridge.registerHandler(
            u"slow"_s, [this](const QJsonValue &, const auto &respond) { m_responds << respond; });
    }

    void cleanup() { m_page.reset(); }

    void payloadsArriveAsWhatTheyAre_data();

    void payloadsArriveAsWhatTheyAre()
    {
        QFETCH(const QByteArray, argument);
        QFETCH(const QByteArray, received);
        QVERIFY(run("WebViewJavascriptBridge.callHandler('echo'" + argument
            + ", answer => { window.answer = answer === undefined ? ''"
              "  : JSON.stringify([answer]) })"));
        TRY_VERIFY(m_page->evaluate(u"window.answer"_s).isValid());
        const QJsonArray wanted = QJsonDocument::fromJson(received).array();
        QCOMPARE(m_heard[0], received.isEmpty() ? QJsonValue(QJsonValue::Undefined) : wanted.at(0));
        const QByteArray answer = m_page->evaluate(u"window.answer"_s).toString().toUtf8();
        QCOMPARE(QJsonDocument::fromJson(answer).array(), wanted);
    }

    void theShellCallsTheDocumentThatItMeans()
    {
        const QByteArray script
            = "WebViewJavascriptBridge.registerHandler('boom', () => { throw new Error('no') });"
              "WebViewJavascriptBridge.registerHandler('double', (data, respond) =>"
              "  respond(data * 2));"
              "WebViewJavascriptBridge.callHandler('echo');";
        QJsonArray answers;
        const auto ask = [&](const QString &document, int number) {
            m_page->bridge.callHandler(document, u"double"_s, number,
                [&answers](const QJsonValue &value) { answers << value; });
        };
        QVERIFY(run(script));
        TRY_COMPARE(m_callers.size(), 1);
        // Neither a missing handler nor one that fails takes another call with it.
        for (const QString &handler : {u"nobody"_s, u"boom"_s})
            m_page->bridge.callHandler(m_callers[0], handler, 1);
        ask(m_callers[0], 21);
        TRY_COMPARE(answers, QJsonArray {42});
        QVERIFY(run(script));
        TRY_COMPARE(m_callers.size(), 2);
        ask(m_callers[0], 1);
        ask({}, 2);
        ask(m_callers[1], 3);
        TRY_COMPARE(answers, (QJsonArray {42, 6}));
    }

    void aLateAnswerNeverReachesTheNextDocument()
    {
        for (const char *path : {"/one.html", "/two.html"}) {
            const auto before = m_responds.size();
            QVERIFY(run("window.answers = []; WebViewJavascriptBridge.callHandler('slow', null,"
                        "  answer => window.answers.push(answer))",
                path));
            TRY_COMPARE(m_responds.size(), before + 1);
        }
        m_responds[0](u"for one"_s);
        m_responds[1](u"for two"_s);
        TRY_COMPARE(m_page->evaluate(u"window.answers.join()"_s).toString(), u"for two"_s);
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
        const QByteArray list = "if (window.WVJBCallbacks) return WVJBCallbacks.push(callback);"
                                "window.WVJBCallbacks = [callback];";
        const QByteArray frame = list
            + "var frame = document.createElement('iframe');"
              "frame.style.display = 'none'; frame.src = '%1';"
              "document.documentElement.appendChild(frame);"
              "setTimeout(function () { document.documentElement.removeChild(frame) }, 0);";
        QTest::newRow("list") << list;
        QTest::newRow("frame") << QByteArray(frame).replace("%1", "https://__bridge_loaded__");
        QTest::newRow("older frame")
            << QByteArray(frame).replace("%1", "wvjbscheme://__BRIDGE_LOADED__");
        QTest::newRow("event") << "document.addEventListener('WebViewJavascriptBridgeReady',"
                                  "  function (event) { callback(event.bridge) }, false);"_ba;
    }

    void whoWaitsForTheBridgeGetsItOnceTheDocumentIsParsed()
    {
        QFETCH(const QByteArray, wait);
        const QByteArray setup
            = "var log = [typeof WebViewJavascriptBridge];"
              "function setup(callback) {"
              "  if (window.WebViewJavascriptBridge) return callback(WebViewJavascriptBridge);"
            + wait
            + "}"
              "setup(function (bridge) {"
              "  document.body.appendChild(document.createElement('p'));"
              "  log.push(document.readyState, bridge === WebViewJavascriptBridge); });"
              "setup(function () { throw new Error('no') });"
              "setup(function () { log.push('second') });"
              "addEventListener('load', function () { setup(function () { log.push('late') }) })";
        const QByteArray content = "<html xmlns='http://www.w3.org/1999/xhtml'><head>"
                                   "<script>//<![CDATA[\n"
            + setup
            + "\n//]]></script></head><body>"
              "<script>log.push(typeof WebViewJavascriptBridge)</script></body></html>";
        for (const char *type : {"text/html", "application/xhtml+xml"}) {
            m_page->server.setPage("/setup", content, type);
            QVERIFY(m_page->load(m_page->server.url("/setup")));
            TRY_COMPARE(m_page->evaluate(u"log.join()"_s).toString(),
                u"undefined,undefined,interactive,true,second,late"_s);
        }
    }

    void aPageMayUseOurNamesForItsOwn()
    {
        for (const QByteArray declaration : {"let %1 = 1", "const %1 = []", "var %1 = []",
                 "function %1() { }", "class %1 { }", "window.%1 = 1"}) {
            for (const QByteArray name : {"qt", "WebViewJavascriptBridge", "WVJBCallbacks"}) {
                const QByteArray script = QByteArray(declaration).replace("%1", name)
                    + "; window.kind = typeof " + name;
                m_page->server.setPage("/late.js", script);
                QVERIFY(m_page->loadPage("<script>" + script + "</script>"));
                const QString early = m_page->evaluate(u"window.kind"_s).toString();
                QVERIFY2(!early.isEmpty() && early != u"undefined", script);
                QVERIFY(m_page->loadPage("<script defer src=/late.js></script>"));
                QVERIFY2(!m_page->evaluate(u"window.kind"_s).toString().isEmpty(), script);
            }
        }
    }

    void aPayloadThatTheShellCannotReadFailsAlone()
    {
        QVERIFY(run("window.log = [];"
                    "const call = (data, respond) => {"
                    "  try { WebViewJavascriptBridge.callHandler('echo', data, respond) }"
                    "  catch (error) { log.push(error.name) } };"
                    "const nested = levels => JSON.parse('['.repeat(levels) + ']'.repeat(levels));"
                    "const cycle = {}; cycle.cycle = cycle;"
                    "call('first');"
                    "call(nested(1000), data => log.push(JSON.stringify(data).length));"
                    "for (const bad of [nested(1001), nested(1024), cycle, 1n])"
                    "  call(bad, () => log.push('answered'));"
                    "call('last', data => log.push(data));"));
        TRY_COMPARE(m_page->evaluate(u"log.join()"_s).toString(),
            u"RangeError,RangeError,TypeError,TypeError,2000,last"_s);
        QCOMPARE(m_heard.size(), 3);
        QVERIFY(m_heard[0] == u"first"_s && m_heard[1].isArray() && m_heard[2] == u"last"_s);
    }

    void aDeadRendererComesBackWithItsPageAndItsBridge()
    {
        QVERIFY(run("WebViewJavascriptBridge.callHandler('echo', 'here',"
                    "  answer => { window.answer = answer })"));
        TRY_COMPARE(m_heard.size(), 1);
        m_page->killRenderer();
        TRY_COMPARE(m_heard.size(), 2);
        TRY_COMPARE(m_page->evaluate(u"window.answer"_s).toString(), u"here"_s);

        // One that dies again and again leaves the bridge to the next.
        QSignalSpy failed(&m_page->webView, &WebView::didFailNavigation);
        const QRegularExpression ended(u"the page's process has ended"_s);
        QTest::ignoreMessage(QtWarningMsg, ended);
        QTest::ignoreMessage(QtWarningMsg, ended);
        m_page->webView.load(QUrl(u"chrome://crash"_s));
        TRY_COMPARE(failed.size(), 1);
        QVERIFY(run("WebViewJavascriptBridge.callHandler('echo')"));
        TRY_COMPARE(m_heard.size(), 3);
    }

    void aThousandCallsInFlightAreEachAnsweredOnce()
    {
        // Answers that are ready at once need no message of their own.
        QSignalSpy batches(&m_page->bridge, &WebViewJavascriptBridge::toPage);
        QVERIFY(
            run("window.sum = 0; window.count = 0;"
                "for (let i = 1; i <= 1000; ++i)"
                "  WebViewJavascriptBridge.callHandler('echo', i, n => { sum += n; ++count });"));
        TRY_COMPARE(m_page->evaluate(u"window.sum"_s).toInt(), 500'500);
        QCOMPARE(m_page->evaluate(u"window.count"_s).toInt(), 1000);
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
