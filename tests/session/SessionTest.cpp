#include "session/SessionClient.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QJsonDocument>
#include <QSignalSpy>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = SilentLogin::Outcome;
using Refresh = LoginResult::Refresh;

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
        m_client->account.silentLogin.start(
            Refresh::No, UserCheck::No, [this](Outcome, const QString &) { start(Refresh::No); });
        TRY_COMPARE(m_endings.size(), 3);
        for (const Ending &ending : std::as_const(m_endings))
            QVERIFY(ending.outcome == Outcome::SignedIn && model().isLogin());
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
        m_client->account.pushBinding.bindGeTui();
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
        m_client->account.pushBinding.bindGeTui();
        QCOMPARE(settled().size(), 1);
        m_client->mainQueue.advance(24h);
        QCOMPARE(settled().size(), 0);
    }

    void aDeadSessionAnswersNobody()
    {
        m_platform.addFault({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, 100}});
        {
            SilentLogin brief(&model(), &m_client->account.requests, &m_client->account.session,
                &m_client->account.pushBinding);
            brief.start(Refresh::Yes, UserCheck::Yes,
                [this](Outcome, const QString &) { m_endings.append(Ending()); });
        }
        TRY_VERIFY(!m_client->isWaiting());
        QCOMPARE(m_endings.size(), 0);
        QVERIFY(!model().isLogin());
    }

    void aSessionEndsOnceAndWhatWasBegunInItIsDropped_data();
    void aSessionEndsOnceAndWhatWasBegunInItIsDropped();
    void anotherUserFindsNothingOfTheFormer_data();
    void anotherUserFindsNothingOfTheFormer();
    void whatLiesHereWithoutAKnownUserIsNobodys();

    void anAnswerKeepsWhatWorks();

private:
    struct Ending
    {
        Outcome outcome;
        QString text;
    };

    //! Null: it names nobody.
    static QJsonObject answerFor(const QString &userId)
    {
        QJsonObject user {{u"user_name"_s, u"x"_s}};
        if (!userId.isNull())
            user[u"user_id"_s] = userId;
        return {{u"user"_s, user}, {u"login_token"_s, u"token of "_s + userId}};
    }

    LoginModel &model() { return m_client->account.loginModel; }

    void start(Refresh refresh, UserCheck check = UserCheck::Yes)
    {
        m_client->account.silentLogin.start(
            refresh, check, [this](Outcome outcome, const QString &text) {
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
        QVERIFY(!m_client->defaults.objectForKey(u"vantCookies"_s).isValid());
        QVERIFY(!m_client->isWaiting());
    }
}

void SessionTest::aSessionEndsOnceAndWhatWasBegunInItIsDropped_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"the user leaves", "the login is not accepted", "another signs in"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void SessionTest::aSessionEndsOnceAndWhatWasBegunInItIsDropped()
{
    QFETCH(const QString, way);
    const bool leaves = way == u"the user leaves";
    const bool isReplaced = way == u"another signs in";
    UserSession &session = m_client->account.session;
    m_platform.addFault({{u"start"_s, u"bindGeTui"_s}, {u"times"_s, 10}, {u"status"_s, 500}});
    model().setC_id(u"cid"_s);
    model().setUserName(u"u"_s);
    session.resume();
    QCOMPARE(run().outcome, Outcome::SignedIn);
    settled();
    const QString token = model().login_token();

    QStringList told;
    connect(&session, &UserSession::ending, &session,
        [&] { told << u"ending"_s << QString::number(m_client->savedCookieNames().size()); });
    connect(&session, &UserSession::ended, &session,
        [&] { told << u"ended"_s << QString::number(m_client->savedCookieNames().size()); });
    m_platform.addFault({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, 100}});
    m_endings.clear();
    start(Refresh::Yes);
    const UserSession::Attempt late = session.attempt();
    const int number = session.number();
    if (leaves)
        session.logout();
    else if (isReplaced)
        session.begin(late, answerFor(u"another"_s), ChosenRegion());
    else
        session.expire();
    QCOMPARE(told, (QStringList {u"ending"_s, u"2"_s, u"ended"_s, leaves ? u"0"_s : u"2"_s}));
    QVERIFY(session.number() != number);
    QCOMPARE(m_endings.size(), 1);
    QCOMPARE(m_endings.constFirst().outcome, Outcome::Cancelled);

    // Neither the answer under way, nor another of that time, nor the hourly binding.
    session.begin(late, answerFor(u"late"_s), Refresh::Yes);
    settled();
    m_client->mainQueue.advance(24h);
    QCOMPARE(settled().size(), 0);
    QCOMPARE(m_endings.size(), 1);
    QCOMPARE(model().isLogin(), isReplaced);
    QCOMPARE(session.isActive(), isReplaced);
    QCOMPARE(model().userName(), leaves ? u""_s : u"u"_s);
    QCOMPARE(model().login_token(), isReplaced ? u"token of another"_s : token);
    QVERIFY(!m_client->defaults.objectForKey(u"MiPushUsingCookie"_s).isValid());
    if (!isReplaced) {
        session.logout();
        session.expire();
        QCOMPARE(told.size(), 4);
    }
}

void SessionTest::anotherUserFindsNothingOfTheFormer_data()
{
    QTest::addColumn<QString>("site");
    QTest::addColumn<QString>("user"); // null: the answer names none
    QTest::addColumn<bool>("isOther");
    QTest::newRow("the same") << u"school01"_s << u"1"_s << false;
    QTest::newRow("nobody named") << u"school02"_s << QString() << false;
    QTest::newRow("another of the school") << u"school01"_s << u"2"_s << true;
    QTest::newRow("the same number at another school") << u"school02"_s << u"1"_s << true;
}

void SessionTest::anotherUserFindsNothingOfTheFormer()
{
    QFETCH(const QString, site);
    QFETCH(const QString, user);
    QFETCH(const bool, isOther);
    UserSession &session = m_client->account.session;
    HTTPCookieStorage *storage = m_client->cookieStorage;
    const QUrl host(u"http://h.example/"_s);
    const auto receive = [&](const char *cookie) {
        storage->setCookiesFromUrl(QNetworkCookie::parseCookies(cookie), host);
    };
    const auto held = [](const HTTPCookieStorage &jar) {
        QByteArrayList names;
        for (const QNetworkCookie &cookie : jar.cookies())
            names << cookie.name();
        std::sort(names.begin(), names.end());
        return names;
    };
    storage->removeReceivedBefore(storage->mark());
    m_client->account.requests.setOrganization(u"school01"_s);
    session.begin(session.attempt(), answerFor(u"1"_s), ChosenRegion());
    receive("mo=former; Max-Age=1000");
    receive("theme=former; Max-Age=1000");
    session.logout();

    const UserSession::Attempt attempt = session.attempt();
    receive("tmo=new; Max-Age=1000");
    QNetworkCookie ofAPage("page", "former");
    ofAPage.setDomain(host.host());
    storage->setCookie(ofAPage);
    QStringList signedInAtTheChange;
    connect(&session, &UserSession::userChanging, &session, [&] {
        signedInAtTheChange << (model().isLogin() ? u"yes"_s : u"no"_s)
                            << model().userModel->user_id;
    });
    // Later runs know whose the last session was.
    UserSession nextRun(&model(), &m_client->defaults, storage, &m_client->account.ssoCookies,
        &m_client->account.loginResult);
    connect(&nextRun, &UserSession::userChanging, &session, &UserSession::userChanging);
    m_client->account.requests.setOrganization(site);
    nextRun.begin({nextRun.number(), attempt.cookieMark}, answerFor(user), ChosenRegion());
    QCOMPARE(signedInAtTheChange, isOther ? (QStringList {u"no"_s, u"1"_s}) : QStringList());
    QVERIFY(model().isLogin());
    const QByteArrayList all {"page", "theme", "tmo"};
    QCOMPARE(held(*storage), isOther ? QByteArrayList {"tmo"} : all);
    QCOMPARE(m_client->savedCookieNames(), QStringList {u"tmo"_s});
    const QByteArrayList persistent {"theme", "tmo"};
    TRY_COMPARE(held(HTTPCookieStorage(m_client->folder.filePath(u"cookies.json"_s))),
        isOther ? QByteArrayList {"tmo"} : persistent);
}

void SessionTest::whatLiesHereWithoutAKnownUserIsNobodys()
{
    UserSession &session = m_client->account.session;
    HTTPCookieStorage *storage = m_client->cookieStorage;
    QSignalSpy changes(&session, &UserSession::userChanging);
    const auto receive = [&](const char *cookie) {
        storage->setCookiesFromUrl(
            QNetworkCookie::parseCookies(cookie), QUrl(u"http://h.example/"_s));
    };
    receive("theme=former");
    // A login that is stored is somebody's, who goes on; whoever signs in after it is another.
    model().setIsLogin(true);
    session.launch();
    session.resume();
    session.begin(session.attempt(), answerFor(u"0"_s), Refresh::Yes);
    QVERIFY(storage->holdsCookieNamed({"theme"}));
    m_client->defaults.removeObjectForKey(u"LastUser"_s);
    session.expire();
    session.begin(session.attempt(), answerFor(u"1"_s), ChosenRegion());
    QVERIFY(changes.size() == 1 && !storage->holdsCookieNamed({"theme"}));
    session.expire();
    m_client->defaults.removeObjectForKey(u"LastUser"_s);
    session.launch();
    QCOMPARE(changes.size(), 2);
    // From now on somebody is known, if only as nobody: the first to sign in finds all as it is.
    receive("theme=own");
    session.launch();
    session.begin(session.attempt(), answerFor(u"1"_s), ChosenRegion());
    QVERIFY(changes.size() == 2 && storage->holdsCookieNamed({"theme"}));

    // What a login that fails has brought goes with it, and nothing else.
    const UserSession::Attempt attempt = session.attempt();
    receive("mo=refused");
    session.reject(attempt);
    QVERIFY(storage->holdsCookieNamed({"theme"}) && !storage->holdsCookieNamed({"mo"}));
}

void SessionTest::anAnswerKeepsWhatWorks()
{
    m_client->account.requests.setOrganization(u"school01"_s);
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
        m_client->defaults.setObject(u"http://before/"_s, u"redirect_url"_s);
        m_client->account.loginResult.handleLoginResult(
            QJsonDocument::fromJson(answer).object(), ChosenRegion {{}, u""_s, u"新"_s});
        QCOMPARE(model().login_token(), token);
        const UserDefaults restarted(m_client->folder.filePath(u"settings.ini"_s));
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
