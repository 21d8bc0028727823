#include "net/Logging.h"
#include "net/NetClient.h"
#include "support/SandboxProcess.h"

#include <QLoggingCategory>
#include <QTest>

//! From the call to its completion: when it comes, how often, and what stays behind.
class RequestLifeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void completesLaterAndOnce();
    void failsLaterAndOnce();
    void manyAtATimeGetTheirOwnAnswers();
    void completionMayStartTheNextCall();
    void nobodyNeedsToListen();
    void cancelledCallFails();
    void otherTypesAreNeverSentNorAnswered();
    void silentAfterTheManagerIsGone();
    void silentAfterTheNetworkIsGone();
    void keepsTheLastCookieString();
    void logsNoSecret();

private:
    //! Answers to "cndSite" take so long that a test can act before them.
    void delayAnswers() { m_sandbox.addFault({{u"start"_qs, m_start}, {u"delay_ms"_qs, 20'000}}); }
    void start(ResponseCallback response, int type = RequestItem::Get);

    SandboxProcess m_sandbox {{u"--schools"_qs, u"12"_qs}};
    std::unique_ptr<NetClient> m_client;
    const QString m_action = u"rb/platform/site"_qs;
    const QString m_start = u"cndSite"_qs;
};

void RequestLifeTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

void RequestLifeTest::init()
{
    m_sandbox.reset();
    m_client = std::make_unique<NetClient>(m_sandbox.hosts());
}

void RequestLifeTest::start(ResponseCallback response, int type)
{
    m_client->manager.connectWithAction(m_action, m_start, type, {}, std::move(response));
}

void RequestLifeTest::completesLaterAndOnce()
{
    int completions = 0;
    size_t heldMeanwhile = 0;
    start([&](int, const QJsonValue &, const auto &) {
        ++completions;
        heldMeanwhile = m_client->manager.connectItems().size();
        QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
    });
    QCOMPARE(completions, 0);
    QCOMPARE(m_client->manager.connectItems().size(), 1u);
    QTRY_COMPARE(completions, 1);
    QCOMPARE(heldMeanwhile, 1u);
    QCOMPARE(m_client->manager.connectItems().size(), 0u);
    // A second one would have come with the call after.
    m_client->connect(m_action, m_start);
    QCOMPARE(completions, 1);
}

void RequestLifeTest::failsLaterAndOnce()
{
    DeploymentConfiguration::Hosts hosts = m_sandbox.hosts();
    hosts.rb = u"nonsense://"_qs;
    m_client = std::make_unique<NetClient>(hosts);
    int completions = 0;
    start([&](int, const QJsonValue &, const auto &) { ++completions; });
    QCOMPARE(completions, 0);
    QTRY_COMPARE(completions, 1);
    QVERIFY(m_client->manager.connectItems().empty());
    m_client->connect(m_action, m_start);
    QCOMPARE(completions, 1);
}

void RequestLifeTest::manyAtATimeGetTheirOwnAnswers()
{
    constexpr int count = 40;
    QMap<int, QString> answers;
    for (int i = 0; i < count; ++i) {
        m_client->requests.checkAppUpdateWithCurNo(QString::number(i), u"a"_qs,
            [&answers, i](int, const QJsonValue &data, const auto &) {
                QVERIFY(!answers.contains(i));
                answers[i] = data[u"bulid_no"].toString();
            });
    }
    QCOMPARE(m_client->manager.connectItems().size(), size_t(count));
    QTRY_COMPARE(answers.size(), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(answers[i], QString::number(i));
    QVERIFY(m_client->manager.connectItems().empty());
}

void RequestLifeTest::completionMayStartTheNextCall()
{
    QList<int> statuses;
    start([&](int status, const QJsonValue &, const auto &) {
        statuses << status;
        // Many, so that the table of items grows while one of them is being delivered.
        for (int i = 0; i < 20; ++i)
            start([&](int next, const QJsonValue &, const auto &) { statuses << next; });
    });
    QTRY_COMPARE(statuses, QList<int>(21, 200));
    QVERIFY(m_client->manager.connectItems().empty());
}

void RequestLifeTest::nobodyNeedsToListen()
{
    start({});
    QTRY_VERIFY(m_client->manager.connectItems().empty());
    QCOMPARE(m_sandbox.takeRequests().size(), 1);
}

void RequestLifeTest::cancelledCallFails()
{
    delayAnswers();
    QList<Answer> answers;
    start([&](int status, const QJsonValue &data, const auto &error) {
        answers.append({status, data, error});
    });
    const auto &items = m_client->manager.connectItems();
    items.begin()->second->cancel();
    QVERIFY(answers.isEmpty());
    items.begin()->second->cancel();
    QTRY_COMPARE(answers.size(), 1);
    QCOMPARE(answers.first().status, 1);
    QCOMPARE(answers.first().error->errorDescription, u"请求错误"_qs);
    QVERIFY(answers.first().error->code != 0);
    QVERIFY(items.empty());
}

void RequestLifeTest::otherTypesAreNeverSentNorAnswered()
{
    bool answered = false;
    start([&](int, const QJsonValue &, const auto &) { answered = true; }, 2);
    m_client->manager.connectItems().begin()->second->cancel();
    m_client->connect(u"api/public_all"_qs, u"get"_qs);
    QVERIFY(!answered);
    QCOMPARE(m_client->manager.connectItems().size(), 1u);
    QCOMPARE(m_sandbox.takeRequests().size(), 1);
}

void RequestLifeTest::silentAfterTheManagerIsGone()
{
    delayAnswers();
    bool answered = false;
    {
        BaseRequestManager manager(&m_client->network, &m_client->loginModel, &m_client->defaults,
            m_sandbox.hosts());
        manager.connectWithAction(m_action, m_start, RequestItem::Get, {},
            [&](int, const QJsonValue &, const auto &) { answered = true; });
    }
    QTRY_VERIFY(m_client->network.findChildren<HTTPTask *>().isEmpty());
    QVERIFY(!answered);
}

void RequestLifeTest::silentAfterTheNetworkIsGone()
{
    delayAnswers();
    bool answered = false;
    auto network = std::make_unique<QNetworkAccessManager>();
    BaseRequestManager manager(
        network.get(), &m_client->loginModel, &m_client->defaults, m_sandbox.hosts());
    manager.connectWithAction(m_action, m_start, RequestItem::Get, {},
        [&](int, const QJsonValue &, const auto &) { answered = true; });
    network.reset();
    manager.connectItems().begin()->second->cancel();
    QCoreApplication::processEvents();
    QVERIFY(!answered);
}

void RequestLifeTest::keepsTheLastCookieString()
{
    const auto stored = [&] {
        return UserDefaults(m_client->folder.filePath(u"settings.ini"_qs))
            .stringForKey(u"MiPushUsingCookie"_qs);
    };
    const auto answerWithCookie = [&](const QString &cookie, int status) {
        m_sandbox.addFault({{u"start"_qs, m_start}, {u"status"_qs, status},
            {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, cookie}}}});
    };
    // Signing in sets three cookies, each in a header of its own.
    m_client->requests.setOrganization(u"school01"_qs);
    const Answer login = m_client->connect(u"gpl/portal"_qs, u"login4H5"_qs, RequestItem::Get,
        {{u"user_code"_qs, u"special01"_qs}, {u"user_pwd"_qs, u"p+w&x=1 %41#/?密码"_qs}});
    QCOMPARE(login.status, 200);
    QStringList names;
    for (const QString &cookie : stored().split(u", "_qs))
        names << cookie.section(u'=', 0, 0);
    names.sort();
    QCOMPARE(names, (QStringList {u"acw_route"_qs, u"mo"_qs, u"tmo"_qs}));

    answerWithCookie(u"a=1; Expires=Wed, 21 Oct 2037 07:28:00 GMT; Path=/"_qs, 200);
    m_client->connect(m_action, m_start);
    QCOMPARE(stored(), u"a=1; Expires=Wed, 21 Oct 2037 07:28:00 GMT; Path=/"_qs);

    m_client->connect(m_action, m_start);
    answerWithCookie(u"b=2"_qs, 500);
    m_client->connect(m_action, m_start);
    answerWithCookie(u"c=3"_qs, 200);
    m_client->connect(m_action, m_start, RequestItem::Post);
    QVERIFY2(stored().startsWith(u"a=1"), qPrintable(stored()));

    answerWithCookie(u"d=4"_qs, 201);
    m_client->connect(m_action, m_start);
    QCOMPARE(stored(), u"d=4"_qs);
}

namespace {

QStringList logged;

void keepLine(QtMsgType, const QMessageLogContext &, const QString &line)
{
    logged << line;
}

}

void RequestLifeTest::logsNoSecret()
{
    QLoggingCategory::setFilterRules(u"vant.*=true"_qs);
    const auto handler = qInstallMessageHandler(keepLine);
    m_sandbox.addFault({{u"start"_qs, u"login"_qs}, {u"times"_qs, 2},
        {u"headers"_qs, QJsonObject {{u"Set-Cookie"_qs, u"mo=secret1; Path=/"_qs}}}});
    m_client->requests.setOrganization(u"school01"_qs);
    for (int i = 0; i < 2; ++i)
        m_client->connect(u"rb/h5/login"_qs, u"login"_qs, RequestItem::Get,
            {{u"user_code"_qs, u"student01"_qs}, {u"user_pwd"_qs, u"secret2"_qs},
                {u"login_token"_qs, u"secret3"_qs}, {u"sign"_qs, u"secret4"_qs},
                {u"code"_qs, u"secret5"_qs}, {u"card_no"_qs, u"secret6"_qs}});
    delayAnswers();
    start({});
    m_client->manager.connectItems().begin()->second->cancel();
    QTRY_VERIFY(m_client->manager.connectItems().empty());
    qInstallMessageHandler(handler);
    QLoggingCategory::setFilterRules({});

    const QString all = logged.join(u'\n');
    QVERIFY2(!all.contains(u"secret"), qPrintable(all));
    QVERIFY(all.contains(u"\"user_code\":\"student01\""));
    QVERIFY(logged.filter(u"params:"_qs).first().startsWith(u"params:{"));
    QCOMPARE(logged.filter(u"mipushCookie:"_qs).first(), u"mipushCookie:(null)"_qs);
    QCOMPARE(logged.filter(u"mipushCookie:"_qs).last(), u"mipushCookie:***"_qs);
    QCOMPARE(logged.filter(u"cookieStr:"_qs).first(), u"cookieStr:***"_qs);
    QCOMPARE(logged.filter(u"_requestTask======="_qs).size(), 1);
}

QTEST_GUILESS_MAIN(RequestLifeTest)
#include "RequestLifeTest.moc"
