#include "net/NetClient.h"
#include "platform/HTTPTask.h"
#include "support/SandboxProcess.h"

#include <QJsonArray>
#include <QTcpServer>
#include <QTest>

//! What becomes of the bodies, the statuses and the lines of servers, good and bad.
class RequestEnvelopeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_sandbox.reset(); }
    void mapsTheBody_data();
    void mapsTheBody();
    void mapsTheReply_data();
    void mapsTheReply();
    void bodyAboveTheLimitIsCutOff();
    void bodyBelowTheLimitIsRead();
    void unreachableServer_data();
    void unreachableServer();
    void nothingOfAPostIsParsed_data();
    void nothingOfAPostIsParsed();

private:
    Answer answerTo(const QJsonObject &fault, int type = RequestItem::Get);

    SandboxProcess m_sandbox {{u"--schools"_qs, u"12"_qs}};
    const QString m_start = u"cndSite"_qs;
};

namespace {

constexpr auto undefined = QJsonValue::Undefined;

Answer refused(qint64 code, const QString &text)
{
    return {1, undefined, ResponseErrorInfo::createErrorInfoWithCode(code, text)};
}

//! The code of a transport error is the transport's business, but it has one.
void compareWithTransportError(const Answer &answer)
{
    QCOMPARE(answer.status, 1);
    QVERIFY(answer.data.isUndefined());
    QVERIFY(answer.error);
    QCOMPARE(answer.error->errorDescription, u"请求错误"_qs);
    QVERIFY(answer.error->code != 0);
}

}

Q_DECLARE_METATYPE(Answer)

void RequestEnvelopeTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

Answer RequestEnvelopeTest::answerTo(const QJsonObject &fault, int type)
{
    QJsonObject described = fault;
    described[u"start"] = m_start;
    m_sandbox.addFault(described);
    NetClient client(m_sandbox.hosts());
    return client.connect(u"rb/platform/site"_qs, m_start, type);
}

void RequestEnvelopeTest::mapsTheBody_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<Answer>("answer");

    const auto row = [](const char *body, const Answer &answer) {
        QTest::newRow(body) << QString::fromUtf8(body) << answer;
    };
    const Answer unreadable = refused(0, u"请求错误"_qs);
    const Answer noObject {1, undefined, {}};

    row(R"({"code":200,"msg":"ok","data":{"a":1}})", {200, QJsonObject {{u"a"_qs, 1}}, {}});
    row(R"({"code":200})", {200, undefined, {}});
    row(R"({"code":200,"data":null})", {200, QJsonValue::Null, {}});
    row(R"({"code":200,"data":"x"})", {200, u"x"_qs, {}});
    row(R"({"code":200,"data":[1]})", {200, QJsonArray {1}, {}});
    row(R"({"code":200,"data":false})", {200, false, {}});
    row(R"({"code":"200","data":1})", {200, 1, {}});
    row(R"({"code":8888,"data":{"a":1}})", {8888, QJsonObject {{u"a"_qs, 1}}, {}});
    row(R"({"code":"8888"})", {8888, undefined, {}});

    row(R"({"code":500,"msg":"系统繁忙","data":1})", refused(500, u"系统繁忙"_qs));
    row(R"({"code":"401","msg":"x"})", refused(401, u"x"_qs));
    row(R"({"code":500})", refused(500, u"(null)"_qs));
    row(R"({"code":500,"msg":null})", refused(500, u"<null>"_qs));
    row(R"({"code":500,"msg":12})", refused(500, u"12"_qs));
    row(R"({"code":1,"msg":""})", refused(1, u""_qs));
    row(R"({"code":-1,"msg":"x"})", refused(-1, u"x"_qs));
    row(R"({"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":null,"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":"oops","msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":{"a":200},"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":[200],"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":1e300,"msg":"x"})", refused(0, u"x"_qs));
    // 200 and 8888 once cut to 32 bits.
    row(R"({"code":4294967496,"msg":"x"})", refused(4294967496, u"x"_qs));
    row(R"({"code":"4294976184","msg":"x"})", refused(4294976184, u"x"_qs));
    row("{}", refused(0, u"(null)"_qs));

    row("[{\"code\":200}]", noObject);
    row("12", noObject);
    row("\"x\"", noObject);
    row("null", noObject);

    row("", unreadable);
    row(R"({"code":200,"data":{"a":)", unreadable);
    row("<html><body>502</body></html>", unreadable);
}

void RequestEnvelopeTest::mapsTheBody()
{
    QFETCH(QString, body);
    QFETCH(Answer, answer);
    QCOMPARE(answerTo({{u"body"_qs, body}}), answer);
}

void RequestEnvelopeTest::mapsTheReply_data()
{
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<bool>("transportError");
    QTest::addColumn<Answer>("answer");

    const QString good = u"{\"code\":200,\"data\":1}"_qs;
    const auto ofType = [&](const QString &type) {
        return QJsonObject {{u"body"_qs, good}, {u"headers"_qs, QJsonObject {{u"Content-Type"_qs, type}}}};
    };
    const auto ofStatus = [&](int status, const QString &body) {
        return QJsonObject {{u"body"_qs, body}, {u"status"_qs, status}};
    };
    const Answer success {200, 1, {}};
    const Answer notParsed = refused(0, u"请求错误"_qs);
    const Answer any;

    for (const QString &type : {u"application/json"_qs, u"text/json"_qs, u"text/plain"_qs,
             u"text/html"_qs, u"Text/HTML; charset=utf-8"_qs})
        QTest::newRow(qPrintable(type)) << ofType(type) << false << success;
    for (const QString &type : {u"application/xml"_qs, u"image/png"_qs, u"application/json2"_qs})
        QTest::newRow(qPrintable(type)) << ofType(type) << true << any;
    QTest::newRow("status 201") << ofStatus(201, good) << false << notParsed;
    QTest::newRow("status 204") << ofStatus(204, u""_qs) << false << notParsed;
    for (const int status : {304, 400, 404, 500, 503})
        QTest::addRow("status %d", status) << ofStatus(status, good) << true << any;
    QTest::newRow("cut in the middle")
        << QJsonObject {{u"body"_qs, good}, {u"cut"_qs, true}} << true << any;
    QTest::newRow("redirect to elsewhere")
        << QJsonObject {{u"body"_qs, u""_qs}, {u"status"_qs, 302},
               {u"headers"_qs, QJsonObject {{u"Location"_qs, u"mailto:a@b"_qs}}}}
        << true << any;
}

void RequestEnvelopeTest::mapsTheReply()
{
    QFETCH(QJsonObject, fault);
    QFETCH(bool, transportError);
    QFETCH(Answer, answer);
    const Answer actual = answerTo(fault);
    if (transportError)
        compareWithTransportError(actual);
    else
        QCOMPARE(actual, answer);
}

void RequestEnvelopeTest::bodyAboveTheLimitIsCutOff()
{
    compareWithTransportError(answerTo({{u"huge"_qs, 2 * HTTPTask::maximumBodySize}}));
}

void RequestEnvelopeTest::bodyBelowTheLimitIsRead()
{
    QCOMPARE(answerTo({{u"huge"_qs, HTTPTask::maximumBodySize - 1024}}).status, 200);
}

void RequestEnvelopeTest::unreachableServer_data()
{
    QTest::addColumn<QString>("address");

    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    QTest::newRow("closed port") << u"http://127.0.0.1:%1/"_qs.arg(closed.serverPort());
    QTest::newRow("certificate of an unknown authority")
        << m_sandbox.address(SandboxProcess::Tls);
    QTest::newRow("unknown scheme") << u"gopher://127.0.0.1/"_qs;
    QTest::newRow("no address") << QString();
    QTest::newRow("ill-formed address") << u"http://[::/"_qs;
}

void RequestEnvelopeTest::unreachableServer()
{
    QFETCH(QString, address);
    DeploymentConfiguration::Hosts hosts = m_sandbox.hosts();
    hosts.rb = address;
    NetClient client(hosts);
    compareWithTransportError(client.connect(u"rb/platform/site"_qs, m_start));
}

void RequestEnvelopeTest::nothingOfAPostIsParsed_data()
{
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<bool>("transportError");

    QTest::newRow("success") << QJsonObject {{u"body"_qs, u"{\"code\":200}"_qs}} << false;
    QTest::newRow("refusal") << QJsonObject {{u"body"_qs, u"{\"code\":500}"_qs}} << false;
    QTest::newRow("empty") << QJsonObject {{u"body"_qs, u""_qs}} << false;
    QTest::newRow("failure") << QJsonObject {{u"status"_qs, 500}} << true;
}

void RequestEnvelopeTest::nothingOfAPostIsParsed()
{
    QFETCH(QJsonObject, fault);
    QFETCH(bool, transportError);
    const Answer answer = answerTo(fault, RequestItem::Post);
    if (transportError)
        compareWithTransportError(answer);
    else
        QCOMPARE(answer, (Answer {1, undefined, {}}));
}

QTEST_GUILESS_MAIN(RequestEnvelopeTest)
#include "RequestEnvelopeTest.moc"
