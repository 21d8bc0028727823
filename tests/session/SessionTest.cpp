#include "session/SessionClient.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = SilentLogin::Outcome;
using Refresh = LoginResult::Refresh;
using UserCheck = SilentLogin::UserCheck;

//! What a login leaves behind, the silent login and the push binding after it, over real HTTP.
class SessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_platform.reset();
        m_client = std::make_unique<SessionClient>(m_platform.hosts());
        QVERIFY(m_client->rememberLogin(u"student01"_s));
        m_platform.takeRequests();
        m_endings.clear();
    }

    void storesNothingWithoutSuccess();

    void oneRunsAtATimeAndAnyRefreshCounts()
    {
        start(Refresh::No);
        start(Refresh::Yes);
        m_client->silentLogin.start(
            Refresh::No, UserCheck::No, [this](Outcome, const QString &) { start(Refresh::No); });
        TRY_COMPARE(m_endings.size(), 3);
        for (const Ending &ending : std::as_const(m_endings))
            QCOMPARE(ending.outcome, Outcome::SignedIn);
        QVERIFY(model().isLogin());
        // The three together made one, the one from an answer another.
        QCOMPARE(settled().size(), 2);
    }

    void bindsTheClientIdThatIsKnown()
    {
        run();
        QVERIFY(!m_client->isWaiting());
        // An id that comes later waits for the next login.
        model().setC_id(u"cid-1"_s);
        m_client->mainQueue.advance(24h);
        QCOMPARE(settled().size(), 1);

        m_platform.addFault({{u"start"_s, u"bindGeTui"_s}, {u"status"_s, 500}});
        run();
        const QList<TracedRequest> requests = settled();
        QCOMPARE(requests.size(), 2);
        QCOMPARE(requests[1].path, u"/school01/do"_s);
        QCOMPARE(requests[1].value(u"action"_s), u"gpl/common/hv/bind"_s);
        QCOMPARE(requests[1].value(u"start"_s), u"bindGeTui"_s);
        QCOMPARE(requests[1].value(u"c_id"_s), u"cid-1"_s);
        QCOMPARE(requests[1].value(u"user_id"_s), model().userModel->user_id);

        model().setC_id(u"cid-2"_s);
        m_client->mainQueue.advance(1h);
        QCOMPARE(settled().constFirst().value(u"c_id"_s), u"cid-2"_s);
        m_client->mainQueue.advance(24h);
        QCOMPARE(settled().size(), 0);
    }

    void elevenFailedBindingsMakeTenRetries()
    {
        m_platform.addFault({{u"start"_s, u"bindGeTui"_s}, {u"times"_s, 1000}, {u"status"_s, 500}});
        model().setC_id(u"cid-1"_s);
        model().userModel = UserModel();
        m_client->binding.bindGeTui();
        QCOMPARE(settled().size(), 1);
        for (int retry = 1; retry <= 10; ++retry) {
            m_client->mainQueue.advance(3599s);
            QCOMPARE(settled().size(), 0);
            m_client->mainQueue.advance(1s);
            QCOMPARE(settled().size(), 1);
        }
        // The process's ten are used up.
        m_client->mainQueue.advance(24h);
        QCOMPARE(settled().size(), 0);
        m_client->binding.bindGeTui();
        QCOMPARE(settled().size(), 1);
        m_client->mainQueue.advance(24h);
        QCOMPARE(settled().size(), 0);
    }

    void aDeadSessionAnswersNobody()
    {
        m_platform.addFault({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, 100}});
        {
            SilentLogin brief(&model(), &m_client->net.requests, &m_client->cookies,
                &m_client->result, &m_client->binding);
            brief.start(Refresh::Yes, UserCheck::Yes,
                [this](Outcome, const QString &) { m_endings.append(Ending()); });
        }
        TRY_VERIFY(!m_client->isWaiting());
        QCOMPARE(m_endings.size(), 0);
        QVERIFY(!model().isLogin());
    }

    void whoSignsOutMeanwhileStaysSignedOut()
    {
        start(Refresh::Yes);
        m_client->silentLogin.cancel();
        QCOMPARE(m_endings.size(), 1);
        QCOMPARE(m_endings.constFirst().outcome, Outcome::Failed);
        QVERIFY(m_endings.constFirst().text.isNull());
        settled();
        QCOMPARE(m_endings.size(), 1);
        QVERIFY(!model().isLogin());
        QCOMPARE(run().outcome, Outcome::SignedIn);
    }

    void anAnswerKeepsWhatWorks();

private:
    struct Ending
    {
        Outcome outcome;
        QString text;
    };

    LoginModel &model() { return m_client->net.loginModel; }

    void start(Refresh refresh, UserCheck check = UserCheck::Yes)
    {
        m_client->silentLogin.start(refresh, check, [this](Outcome outcome, const QString &text) {
            m_endings.append({outcome, text});
        });
    }

    Ending run(Refresh refresh = Refresh::Yes)
    {
        m_endings.clear();
        start(refresh);
        if (!m_endings.isEmpty())
            qFatal("answered from inside the call");
        if (!QTest::qWaitFor([&] { return !m_endings.isEmpty(); }, patienceMs))
            qFatal("no answer");
        return m_endings.constLast();
    }

    //! The requests that the platform received, after all of them are answered.
    QList<TracedRequest> settled()
    {
        if (!QTest::qWaitFor([&] { return !m_client->isWaiting(); }, patienceMs))
            qFatal("no answer");
        return m_platform.takeRequests();
    }

    PlatformProcess m_platform;
    std::unique_ptr<SessionClient> m_client;
    QList<Ending> m_endings;
};

void SessionTest::storesNothingWithoutSuccess()
{
    const QString unusable = u"请求错误"_s;
    const struct
    {
        Outcome outcome;
        QString text;
        QJsonObject fault;
        QString account = u"student01"_s;
        QString site = u"school01"_s;
    } rows[] {
        {Outcome::Refused, {}, {}, u"parent01"_s},
        {Outcome::Failed, u"登录已过期，请重新登录"_s, {}, u"student01"_s, u"school02"_s},
        {Outcome::Failed, u"(null)"_s, {{u"body"_s, uR"({"code": 401})"_s}}},
        {Outcome::Failed, unusable, {{u"body"_s, uR"({"code": 8888, "data": {"user": {}}})"_s}}},
        {Outcome::Failed, unusable, {{u"body"_s, uR"({"code": 200, "data": [1]})"_s}}},
        {Outcome::Failed, unusable, {{u"body"_s, uR"({"code": 200, "data": {"user)"_s}}},
        {Outcome::Failed, unusable, {{u"status"_s, 502}}},
    };
    for (const auto &row : rows) {
        QVERIFY(m_client->rememberLogin(row.account));
        model().setSiteCode(row.site);
        model().setC_id(u"cid"_s);
        const QString token = model().login_token();
        if (!row.fault.isEmpty()) {
            QJsonObject fault = row.fault;
            fault[u"start"] = u"login4H5"_s;
            m_platform.addFault(fault);
        }
        const Ending ending = run();
        QCOMPARE(ending.outcome, row.outcome);
        QCOMPARE(ending.text, row.text);
        QVERIFY(!model().isLogin());
        QVERIFY(!model().userModel && !model().ssoinfo && !model().siteInfo);
        QCOMPARE(model().login_token(), token);
        QVERIFY(!m_client->net.defaults.objectForKey(u"vantCookies"_s).isValid());
        QVERIFY(!m_client->isWaiting());
    }
}

void SessionTest::anAnswerKeepsWhatWorks()
{
    m_client->net.requests.setOrganization(u"school01"_s);
    model().setLogin_token(u"old token"_s);
    model().setSchool(u"A"_s);
    model().setProvinces(u"B"_s);
    const struct
    {
        QByteArray answer;
        QString token;
        QString redirectUrl;
    } rows[] {
        {"{}", u"old token"_s, {}},
        {R"({"login_token": null, "redirect_url": null})", u"old token"_s, {}},
        {R"({"login_token": {}, "user": [1], "siteInfo": "x", "user_type": {}})", u"old token"_s,
            {}},
        {R"({"login_token": 12, "redirect_url": "h/?a=1;b=\"2\""})", u"12"_s, uR"(h/?a=1;b="2")"_s},
        {R"({"login_token": "", "redirect_url": ""})", u""_s, u""_s},
    };
    for (const auto &[answer, token, redirectUrl] : rows) {
        m_client->net.defaults.setObject(u"http://before/"_s, u"redirect_url"_s);
        m_client->result.handleLoginResult(
            QJsonDocument::fromJson(answer).object(), ChosenRegion {{}, u""_s, u"新"_s});
        QCOMPARE(model().login_token(), token);
        const UserDefaults restarted(m_client->net.folder.filePath(u"settings.ini"_s));
        QCOMPARE(restarted.stringForKey(u"redirect_url"_s), redirectUrl);
        QCOMPARE(restarted.objectForKey(u"redirect_url"_s).isValid(), !redirectUrl.isNull());
        QCOMPARE(model().userModel, UserModel());
        QCOMPARE(model().siteInfo, SiteModel());
        QCOMPARE(model().siteCode(), u"school01"_s);
        // An empty part of the region leaves the stored one.
        QCOMPARE(model().school() + model().provinces() + model().city(), u"AB新"_s);
    }
}

QTEST_GUILESS_MAIN(SessionTest)
#include "SessionTest.moc"
