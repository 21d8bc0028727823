#include "session/SessionClient.h"
#include "support/SandboxProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Outcome = SilentLogin::Outcome;
using Refresh = LoginResult::Refresh;

Q_DECLARE_METATYPE(SilentLogin::Outcome)

//! Over real HTTP, with the accounts of the school platform.
class SilentLoginTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void signsInWithTheStoredToken();
    void signsInOnlyOnRefresh();
    void saysHowItEnded_data();
    void saysHowItEnded();
    void storesNothingWithoutSuccess_data();
    void storesNothingWithoutSuccess();
    void keepsTokenAndSiteOnAnOddAnswer_data();
    void keepsTokenAndSiteOnAnOddAnswer();
    void oneRunsAtATime();
    void anyRefreshCounts();
    void mayBeStartedAgainFromItsAnswer();
    void bindsTheClientIdOnlyWhenKnown();
    void aDeadSessionAnswersNobody();

private:
    struct Ending
    {
        Outcome outcome;
        QString text;
    };

    LoginModel &model() { return m_client->net.loginModel; }
    void start(Refresh refresh);
    Ending run(Refresh refresh = Refresh::Yes);
    QList<TracedRequest> loginRequests();

    SandboxProcess m_sandbox;
    std::unique_ptr<SessionClient> m_client;
    QList<Ending> m_endings;
};

void SilentLoginTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

void SilentLoginTest::init()
{
    m_sandbox.reset();
    m_client = std::make_unique<SessionClient>(m_sandbox.hosts());
    QVERIFY(m_client->rememberLogin(u"student01"_s));
    m_sandbox.takeRequests();
    m_endings.clear();
}

void SilentLoginTest::start(Refresh refresh)
{
    m_client->silentLogin.start(refresh, [this](Outcome outcome, const QString &text) {
        m_endings.append({outcome, text});
    });
}

SilentLoginTest::Ending SilentLoginTest::run(Refresh refresh)
{
    const qsizetype before = m_endings.size();
    start(refresh);
    if (m_endings.size() != before)
        qFatal("answered from inside the call");
    if (!QTest::qWaitFor([&] { return m_endings.size() > before; }, 20'000))
        qFatal("no answer");
    return m_endings.constLast();
}

QList<TracedRequest> SilentLoginTest::loginRequests()
{
    QList<TracedRequest> requests = m_sandbox.takeRequests();
    requests.removeIf(
        [](const TracedRequest &request) { return request.value(u"start"_s) != u"login4H5"; });
    return requests;
}

void SilentLoginTest::signsInWithTheStoredToken()
{
    const QString token = model().login_token();
    QCOMPARE(run().outcome, Outcome::SignedIn);

    const QList<TracedRequest> requests = m_sandbox.takeRequests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.constFirst().path, u"/school01/do"_s);
    QCOMPARE(requests.constFirst().value(u"login_token"_s), token);
    QCOMPARE(requests.constFirst().value(u"login_type"_s), u"3"_s);

    QVERIFY(model().isLogin());
    QCOMPARE(model().siteCode(), u"school01"_s);
    QCOMPARE(model().user_type, 1);
    QCOMPARE(model().userModel->user_code, u"student01"_s);
    QCOMPARE(model().ssoinfo->ck_LoginName, u"student01"_s);
    QVERIFY(model().siteInfo->redirect_url.startsWith(m_sandbox.address()));
    QCOMPARE(m_client->savedCookieNames(), (QStringList {u"mo"_s, u"tmo"_s}));
}

void SilentLoginTest::signsInOnlyOnRefresh()
{
    int writes = 0;
    model().observeIsLogin(this, [&](bool) { ++writes; });
    QCOMPARE(run(Refresh::No).outcome, Outcome::SignedIn);
    QCOMPARE(writes, 1);
    QVERIFY(model().userModel.has_value());
    QCOMPARE(m_client->savedCookieNames().size(), 2);
}

void SilentLoginTest::saysHowItEnded_data()
{
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("site");
    QTest::addColumn<QString>("text");

    const QJsonObject none;
    const auto body = [](const QString &text) {
        return QJsonObject {{u"start"_s, u"login4H5"_s}, {u"body"_s, text}};
    };
    QTest::newRow("a stale token")
        << none << u"stale"_s << u"school01"_s << u"登录已过期，请重新登录"_s;
    QTest::newRow("another school's token")
        << none << QString() << u"school02"_s << u"登录已过期，请重新登录"_s;
    QTest::newRow("no text")
        << body(uR"({"code": 401})"_s) << QString() << u"school01"_s << u"(null)"_s;
    QTest::newRow("a second kind of success")
        << body(uR"({"code": 8888, "data": {"user": {}}})"_s) << QString() << u"school01"_s
        << QString();
    QTest::newRow("truncated") << body(uR"({"code": 200, "data": {"user)"_s) << QString()
                               << u"school01"_s << u"请求错误"_s;
    QTest::newRow("status 500")
        << QJsonObject {{u"start"_s, u"login4H5"_s}, {u"status"_s, 500}} << QString()
        << u"school01"_s << u"请求错误"_s;
}

void SilentLoginTest::saysHowItEnded()
{
    QFETCH(QJsonObject, fault);
    QFETCH(QString, token);
    QFETCH(QString, site);
    if (!fault.isEmpty())
        m_sandbox.addFault(fault);
    if (!token.isNull())
        model().setLogin_token(token);
    model().setSiteCode(site);
    const Ending ending = run();
    QCOMPARE(ending.outcome, Outcome::Failed);
    QTEST(ending.text, "text");
}

void SilentLoginTest::storesNothingWithoutSuccess_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<bool>("fails");
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("an account that may not") << u"parent01"_s << false << Outcome::Refused;
    QTest::newRow("a failure") << u"student01"_s << true << Outcome::Failed;
}

void SilentLoginTest::storesNothingWithoutSuccess()
{
    QFETCH(QString, account);
    QFETCH(bool, fails);
    QVERIFY(m_client->rememberLogin(account));
    model().setC_id(u"cid"_s);
    if (fails)
        m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"status"_s, 502}});
    const QString token = model().login_token();

    QTEST(run().outcome, "outcome");
    QVERIFY(!model().isLogin());
    QVERIFY(!model().userModel && !model().ssoinfo && !model().siteInfo);
    QCOMPARE(model().login_token(), token);
    QVERIFY(!m_client->net.defaults.objectForKey(u"vantCookies"_s).isValid());
    QVERIFY(!m_client->isWaiting());
}

void SilentLoginTest::keepsTokenAndSiteOnAnOddAnswer_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("no token in it") << uR"({"code": 200, "data": {"user": {"user_id": "u"}}})"_s;
    QTest::newRow("no data") << uR"({"code": 200})"_s;
    QTest::newRow("data of a wrong type") << uR"({"code": "200", "data": [1, 2]})"_s;
    QTest::newRow("members of wrong types")
        << uR"({"code": 200, "data": {"user": 5, "siteInfo": [], "login_token": null}})"_s;
}

void SilentLoginTest::keepsTokenAndSiteOnAnOddAnswer()
{
    QFETCH(QString, body);
    const QString token = model().login_token();
    m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"body"_s, body}});
    QCOMPARE(run().outcome, Outcome::SignedIn);
    QCOMPARE(model().login_token(), token);
    QCOMPARE(model().siteCode(), u"school01"_s);
}

void SilentLoginTest::oneRunsAtATime()
{
    start(Refresh::No);
    start(Refresh::Yes);
    start(Refresh::No);
    QTRY_COMPARE(m_endings.size(), 3);
    for (const Ending &ending : m_endings)
        QCOMPARE(ending.outcome, Outcome::SignedIn);
    QCOMPARE(loginRequests().size(), 1);

    run();
    QCOMPARE(loginRequests().size(), 1);
}

void SilentLoginTest::anyRefreshCounts()
{
    start(Refresh::No);
    start(Refresh::Yes);
    QTRY_COMPARE(m_endings.size(), 2);
    QVERIFY(model().isLogin());
}

void SilentLoginTest::mayBeStartedAgainFromItsAnswer()
{
    m_client->silentLogin.start(
        Refresh::Yes, [this](Outcome, const QString &) { start(Refresh::Yes); });
    QTRY_COMPARE(m_endings.size(), 1);
    QCOMPARE(loginRequests().size(), 2);
}

void SilentLoginTest::bindsTheClientIdOnlyWhenKnown()
{
    run();
    QVERIFY(!m_client->isWaiting());
    m_sandbox.takeRequests();

    model().setC_id(u"cid-1"_s);
    run();
    QTRY_VERIFY(!m_client->isWaiting());
    const QList<TracedRequest> requests = m_sandbox.takeRequests();
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests[1].value(u"start"_s), u"bindGeTui"_s);
    QCOMPARE(requests[1].value(u"c_id"_s), u"cid-1"_s);
    QCOMPARE(requests[1].value(u"user_id"_s), model().userModel->user_id);
    QCOMPARE(requests[1].value(u"dev_type"_s), u"1"_s);
}

void SilentLoginTest::aDeadSessionAnswersNobody()
{
    m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, 100}});
    {
        SilentLogin brief(&model(), &m_client->net.requests, &m_client->cookies,
            &m_client->result, &m_client->binding);
        brief.start(Refresh::Yes, [this](Outcome, const QString &) { m_endings.append(Ending()); });
    }
    QTRY_VERIFY(!m_client->isWaiting());
    QCOMPARE(m_endings.size(), 0);
    QVERIFY(!model().isLogin());
}

QTEST_GUILESS_MAIN(SilentLoginTest)
#include "SilentLoginTest.moc"
