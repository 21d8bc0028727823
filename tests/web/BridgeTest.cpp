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
        m_server.setPage(
            path, "<!doctype html><meta charset=utf-8><script>" + script + "</script>");
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

    void theShellCallsThePageAsSoonAsThereIsADocument()
    {
        PageHarness harness;
        harness.bridge.callHandler(u"late"_s, u"kept"_s);
        QVERIFY(harness.load(
            page("WebViewJavascriptBridge.registerHandler('late', data => { window.late = data });"
                 "WebViewJavascriptBridge.registerHandler('boom', () => { throw new Error('no') });"
                 "WebViewJavascriptBridge.registerHandler('double', (data, respond) =>"
                 "  respond(data * 2));")));
        TRY_COMPARE(harness.evaluate(u"window.late"_s).toString(), u"kept"_s);
        QJsonValue answer;
        harness.bridge.callHandler(u"nobody"_s, 1);
        // A handler that fails takes no other call with it.
        harness.bridge.callHandler(u"boom"_s, 1);
        harness.bridge.callHandler(
            u"double"_s, 21, [&answer](const QJsonValue &value) { answer = value; });
        TRY_COMPARE(answer, QJsonValue(42));
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
        bridge.callHandler(u"kept"_s, 1);
        const QJsonArray ready = bridge.begin(u"two"_s, {});
        QCOMPARE(ready.size(), 1);
        QCOMPARE(ready.at(0), (QJsonArray {u"kept"_s, 0, 1}));
        // It is not on the page any more.
        QCOMPARE(bridge.receive(u"one"_s, call), QJsonArray());
        respond(u"for nobody"_s);
        QCOMPARE(bridge.receive(u"two"_s, {}), QJsonArray());
    }

    void framesAndForeignOriginsAreNotServed()
    {
        PageServer foreign("127.0.0.2");
        foreign.setPage("/foreign.html",
            "<script>WebViewJavascriptBridge.callHandler('hello', 'foreign')</script>");
        page("parent.inner = typeof WebViewJavascriptBridge"
             "  + typeof (window.qt || {}).webChannelTransport",
            "/inner.html");
        const QString trusted = page("WebViewJavascriptBridge.callHandler('hello', 'trusted');"
                                     "document.write('<iframe src=/inner.html></iframe>')");
        PageHarness harness([&trusted](const QString &origin) {
            return QUrl(origin).authority() == QUrl(trusted).authority();
        });
        QStringList heard;
        harness.bridge.registerHandler(u"hello"_s,
            [&heard](const QJsonValue &data, const auto &) { heard << data.toString(); });
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"does not serve pages of"_s));
        QVERIFY(harness.load(foreign.url("/foreign.html")));
        QVERIFY(harness.load(trusted));
        TRY_COMPARE(heard, QStringList {u"trusted"_s});
        TRY_COMPARE(harness.evaluate(u"window.inner"_s).toString(), u"undefinedundefined"_s);
        // By which a page could tell a false origin.
        QCOMPARE(
            harness.evaluate(u"typeof qt.webChannelTransport.send"_s).toString(), u"undefined"_s);
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
