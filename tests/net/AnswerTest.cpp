#include "net/NetClient.h"
#include "platform/HTTPSessionManager.h"
#include "platform/HTTPTask.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <QTcpServer>

//! What a call is answered with, be the server good, bad or gone; when, how often, and what stays
//! behind.
class AnswerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void mapsTheBody_data();
    void mapsTheBody();
    void mapsTheReply();
    void bodiesAreReadUpToTheLimit();
    void unreachableServer();
    void nothingOfAPostIsParsed();
    void eachCallCompletesOnceWithItsOwnAnswer();
    void aCancelledCallFailsOnce();
    void otherTypesAreNeverSentNorAnswered();
    void silentAfterManagerOrNetworkIsGone();
    void keepsTheCookieStringOfTheLastGoodAnswer();
    void logsNoSecret();

private:
    Answer answerTo(const QJsonObject &fault, int type = RequestItem::Get);
    //! Answers take so long that a test can act before them.
    void delayAnswers() { m_platform.addFault({{u"start"_qs, m_start}, {u"delay_ms"_qs, 20'000}}); }
    void start(ResponseCallback response, int type = RequestItem::Get);

    PlatformProcess m_platform {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
    const QString m_action = u"rb/platform/site"_qs;
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
    QVERIFY(answer.error);
    QCOMPARE(answer, refused(answer.error->code, u"请求错误"_qs));
    QVERIFY(answer.error->code != 0);
}

}

Q_DECLARE_METATYPE(Answer)

void AnswerTest::initTestCase()
{
    QVERIFY(m_platform.isRunning());
}

void AnswerTest::init()
{
    m_platform.reset();
    m_client = std::make_unique<NetClient>(m_platform.hosts());
}

Answer AnswerTest::answerTo(const QJsonObject &fault, int type)
{
    QJsonObject described = fault;
    described[u"start"] = m_start;
    m_platform.addFault(described);
    // On a connection of its own: a fault on a used one is made good by sending again.
    NetClient client(m_platform.hosts());
    return client.connect(m_action, m_start, type);
}

void AnswerTest::mapsTheBody_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<Answer>("answer");

    const auto row = [](const QByteArray &body, const Answer &answer) {
        QTest::newRow(body.left(60).constData()) << QString::fromUtf8(body) << answer;
    };
    const Answer unreadable = refused(0, u"请求错误"_qs);
    const Answer noObject {1, undefined, {}};

    row(R"({"code":200,"msg":"ok","data":{"a":1}})", {200, QJsonObject {{u"a"_qs, 1}}, {}});
    row(R"({"code":200})", {200, undefined, {}});
    row(R"({"code":200,"data":null})", {200, QJsonValue::Null, {}});
    row(R"({"code":200,"data":false})", {200, false, {}});
    row(R"({"code":"200","data":9007199254740993})", {200, qint64(9007199254740993), {}});
    row("\xEF\xBB\xBF\r\n {\"code\":\"8888\",\"data\":[1]} \n", {8888, QJsonArray {1}, {}});

    row(R"({"code":"401","msg":"系统繁忙","data":1})", refused(401, u"系统繁忙"_qs));
    row(R"({"code":500})", refused(500, u"(null)"_qs));
    row(R"({"code":500,"msg":null})", refused(500, u"<null>"_qs));
    row(R"({"code":500,"msg":12})", refused(500, u"12"_qs));
    row(R"({"code":1,"msg":""})", refused(1, u""_qs));
    row(R"({"code":-1,"msg":"x"})", refused(-1, u"x"_qs));
    row(R"({"code":null,"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":"oops","msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":[200],"msg":"x"})", refused(0, u"x"_qs));
    row(R"({"code":1e300,"msg":"x"})", refused(0, u"x"_qs));
    // 200 and 8888 once cut to 32 bits.
    row(R"({"code":4294967496,"msg":"x"})", refused(4294967496, u"x"_qs));
    row(R"({"code":"4294976184","msg":"x"})", refused(4294976184, u"x"_qs));
    row("{}", refused(0, u"(null)"_qs));

    for (const char *value : {"[{\"code\":200}]", "12", "\"x],[\"", "null"})
        row(value, noObject);
    for (const char *broken :
        {"", "\xEF\xBB\xBF", R"({"code":200,"data":{"a":)", R"({"code":200},)", R"({"code":200}{})",
            "1],[2", "OK", "<html><body>502</body></html>"})
        row(broken, unreadable);
    row(QByteArray(200'000, '[') + QByteArray(200'000, ']'), unreadable);
}

void AnswerTest::mapsTheBody()
{
    QFETCH(QString, body);
    QFETCH(Answer, answer);
    QCOMPARE(answerTo({{u"body"_qs, body}}), answer);
}

void AnswerTest::mapsTheReply()
{
    const auto ofReply = [&](int status, const QString &type) {
        return answerTo({{u"body"_qs, u"{\"code\":200,\"data\":1}"_qs}, {u"status"_qs, status},
            {u"headers"_qs,
                QJsonObject {{u"Content-Type"_qs, type}, {u"Location"_qs, u"mailto:a@b"_qs}}}});
    };
    const QString json = u"application/json"_qs;
    for (const QString &type :
        {json, u"text/json"_qs, u"text/plain"_qs, u"Text/HTML; charset=utf-8"_qs})
        QCOMPARE(ofReply(200, type), (Answer {200, 1, {}}));
    for (const QString &type : {u"application/xml"_qs, u"application/json2"_qs})
        compareWithTransportError(ofReply(200, type));
    for (const int status : {201, 299})
        QCOMPARE(ofReply(status, json), refused(0, u"请求错误"_qs));
    for (const int status : {300, 302, 304, 404, 503})
        compareWithTransportError(ofReply(status, json));
    QCOMPARE(answerTo({{u"body"_qs, u""_qs}, {u"status"_qs, 204}}), refused(0, u"请求错误"_qs));
    compareWithTransportError(answerTo({{u"cut"_qs, true}}));
}

void AnswerTest::bodiesAreReadUpToTheLimit()
{
    constexpr qint64 limit = HTTPSessionManager::defaultMaximumBodySize;
    compareWithTransportError(answerTo({{u"huge"_qs, 2 * limit}}));
    QCOMPARE(answerTo({{u"huge"_qs, limit - 1024}}).status, 200);
}

void AnswerTest::unreachableServer()
{
    QTcpServer closed;
    QVERIFY(closed.listen(QHostAddress::LocalHost));
    const QString closedPort = u"http://127.0.0.1:%1/"_qs.arg(closed.serverPort());
    closed.close();
    DeploymentConfiguration::Hosts hosts = m_platform.hosts();
    for (const QString &address : {closedPort, m_platform.address(PlatformProcess::Tls),
             u"gopher://127.0.0.1/"_qs, QString(), u"http://[::/"_qs}) {
        hosts.rb = address;
        NetClient client(hosts);
        compareWithTransportError(client.connect(m_action, m_start));
        QVERIFY(client.manager.connectItems().empty());
    }
}

void AnswerTest::nothingOfAPostIsParsed()
{
    for (const QString &body : {u"{\"code\":200}"_qs, u"{\"code\":500}"_qs, u""_qs})
        QCOMPARE(answerTo({{u"body"_qs, body}}, RequestItem::Post), (Answer {1, undefined, {}}));
    compareWithTransportError(answerTo({{u"status"_qs, 500}}, RequestItem::Post));
}

void AnswerTest::start(ResponseCallback response, int type)
{
    m_client->manager.connectWithAction(m_action, m_start, type, {}, std::move(response));
}

void AnswerTest::eachCallCompletesOnceWithItsOwnAnswer()
{
    constexpr int count = 40;
    QStringList expected;
    QStringList answers;
    const auto ask = [&](const QString &number, const std::function<void()> &then) {
        expected << number;
        m_client->requests.checkAppUpdateWithCurNo(
            number, u"a"_qs, [&, then](int, const QJsonValue &data, const auto &) {
                answers << data[u"bulid_no"].toString();
                if (then)
                    then();
            });
    };
    // Started from completions, so that the table of calls grows while one of them is being
    // delivered.
    for (int i = 0; i < count; ++i)
        ask(QString::number(i), [&, i] { ask(QString::number(count + i), {}); });
    QVERIFY(answers.isEmpty());
    QCOMPARE(m_client->manager.connectItems().size(), size_t(count));

    TRY_VERIFY(m_client->manager.connectItems().empty());
    expected.sort();
    answers.sort();
    QCOMPARE(answers, expected);
    // Nobody needs to listen.
    start({});
    TRY_VERIFY(m_client->manager.connectItems().empty());
    QCOMPARE(m_platform.takeRequests().size(), 2 * count + 1);
}

void AnswerTest::aCancelledCallFailsOnce()
{
    delayAnswers();
    QList<Answer> answers;
    start([&](int status, const QJsonValue &data, const auto &error) {
        answers.append({status, data, error});
    });
    const auto &items = m_client->manager.connectItems();
    items.begin()->second->cancel();
    items.begin()->second->cancel();
    QVERIFY(answers.isEmpty());
    TRY_VERIFY(items.empty());
    QCOMPARE(answers.size(), 1);
    QCOMPARE(answers.first().error->errorDescription, u"请求错误"_qs);
}

void AnswerTest::otherTypesAreNeverSentNorAnswered()
{
    bool answered = false;
    start([&](int, const QJsonValue &, const auto &) { answered = true; }, 2);
    m_client->manager.connectItems().begin()->second->cancel();
    m_client->connect(u"api/public_all"_qs, u"get"_qs);
    QVERIFY(!answered);
    QCOMPARE(m_client->manager.connectItems().size(), 1u);
    QCOMPARE(m_platform.takeRequests().size(), 1);
}

void AnswerTest::silentAfterManagerOrNetworkIsGone()
{
    delayAnswers();
    bool answered = false;
    auto network = std::make_unique<QNetworkAccessManager>();
    const auto started = [&] {
        auto manager = std::make_unique<BaseRequestManager>(
            network.get(), &m_client->loginModel, &m_client->defaults, m_platform.hosts());
        manager->connectWithAction(m_action, m_start, RequestItem::Get, {},
            [&](int, const QJsonValue &, const auto &) { answered = true; });
        return manager;
    };
    started().reset();
    TRY_VERIFY(network->findChildren<HTTPTask *>().isEmpty());

    const auto manager = started();
    network.reset();
    manager->connectItems().begin()->second->cancel();
    QCoreApplication::processEvents();
    QVERIFY(!answered);
}

void AnswerTest::keepsTheCookieStringOfTheLastGoodAnswer()
{
    const auto storedAfter = [&](const QString &cookie, int status, int type = RequestItem::Get) {
        m_platform.addFault({{u"start"_qs, m_start}, {u"status"_qs, status},
            {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, cookie}}}});
        m_client->connect(m_action, m_start, type);
        const UserDefaults restarted(m_client->folder.filePath(u"settings.ini"_qs));
        return restarted.stringForKey(u"MiPushUsingCookie"_qs);
    };
    const QString first = u"a=1; Expires=Wed, 21 Oct 2037 07:28:00 GMT; Path=/"_qs;
    QCOMPARE(storedAfter(first, 200), first);
    QCOMPARE(storedAfter(u"b=2"_qs, 500), first);
    QCOMPARE(storedAfter(u"c=3"_qs, 200, RequestItem::Post), first);
    QCOMPARE(storedAfter(u"d=4"_qs, 201), u"d=4"_qs);
    m_client->connect(m_action, m_start);
    QCOMPARE(m_client->defaults.stringForKey(u"MiPushUsingCookie"_qs), u"d=4"_qs);

    // Signing in sets three cookies, each in a header of its own.
    m_client->requests.setOrganization(u"school01"_qs);
    m_client->connect(u"gpl/portal"_qs, u"login4H5"_qs, RequestItem::Get,
        {{u"user_code"_qs, u"student01"_qs}, {u"user_pwd"_qs, u"vant1234"_qs}});
    const QString stored = m_client->defaults.stringForKey(u"MiPushUsingCookie"_qs);
    for (const QString &name : {u"mo="_qs, u"tmo="_qs, u"acw_route="_qs})
        QVERIFY2((u", "_qs + stored).contains(u", "_qs + name), qPrintable(stored));
}

void AnswerTest::logsNoSecret()
{
    static QStringList logged;
    QLoggingCategory::setFilterRules(u"vant.*=true"_qs);
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { logged << line; });
    m_client->requests.setOrganization(u"school01"_qs);
    m_platform.addFault({{u"start"_qs, u"login"_qs}, {u"times"_qs, 2},
        {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, u"mo=secret1; Path=/"_qs}}}});
    for (int i = 0; i < 2; ++i)
        m_client->connect(u"rb/h5/login"_qs, u"login"_qs, RequestItem::Get,
            {{u"user_code"_qs, u"student01"_qs}, {u"user_pwd"_qs, u"secret2"_qs},
                {u"login_token"_qs, u"secret3"_qs}, {u"sign"_qs, u"secret4"_qs},
                {u"code"_qs, u"secret5"_qs}, {u"card_no"_qs, u"secret6"_qs}});
    qInstallMessageHandler(handler);
    QLoggingCategory::setFilterRules({});

    const QString all = logged.join(u'\n');
    QVERIFY2(!all.contains(u"secret"), qPrintable(all));
    QVERIFY(all.contains(u"\"user_code\":\"student01\""));
    QVERIFY(all.contains(u"mipushCookie:(null)") && all.contains(u"mipushCookie:***"));
}

QTEST_GUILESS_MAIN(AnswerTest)
#include "AnswerTest.moc"
