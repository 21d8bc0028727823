#include "session/SessionClient.h"
#include "support/PlatformProcess.h"
#include "support/Table.h"

#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = SilentLogin::Outcome;
using Refresh = LoginResult::Refresh;

namespace {

const QUrl host(QStringLiteral("http://h.example/"));

}

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

    void storesNothingWithoutSuccess()
    {
        const QString good = u"student01"_s, unusable = u"请求错误"_s;
        // Who was remembered, of which school, how the answer is spoilt, and what is told.
        const std::tuple<QString, QString, QJsonObject, Ending> rows[] {
            {u"parent01"_s, u"school01"_s, {}, {Outcome::Refused, {}}},
            {good, u"school02"_s, {}, {Outcome::Failed, u"登录已过期，请重新登录"_s}},
            {good, u"school01"_s, body("{'code': 401}"), {Outcome::Failed, u"(null)"_s}},
            {good, u"school01"_s, body("{'code': 8888, 'data': {'user': {}}}"),
                {Outcome::Failed, unusable}},
            {good, u"school01"_s, body("{'code': 200, 'data': [1]}"), {Outcome::Failed, unusable}},
            {good, u"school01"_s, body("{'code': 200, 'data': {'user':"),
                {Outcome::Failed, unusable}},
            {good, u"school01"_s, {{u"status"_s, 502}}, {Outcome::Failed, unusable}},
        };
        for (const auto &[account, site, fault, expected] : rows) {
            QVERIFY(m_client->rememberLogin(account));
            model().setSiteCode(site);
            model().setC_id(u"cid"_s);
            const QString token = model().login_token();
            if (!fault.isEmpty())
                spoil(u"login4H5"_s, fault);
            QCOMPARE(run(), expected);
            QVERIFY(!model().isLogin());
            QVERIFY(!model().userModel && !model().ssoinfo && !model().siteInfo);
            QCOMPARE(model().login_token(), token);
            QVERIFY(!m_client->defaults.objectForKey(u"vantCookies"_s).isValid());
            QVERIFY(!m_client->isWaiting());
        }
    }

    void oneRunsAtATimeAndAnyRefreshCounts()
    {
        start(Refresh::No);
        start(Refresh::Yes);
        m_client->account.silentLogin.start(
            Refresh::No, UserCheck::No, [this](Outcome, const QString &) { start(Refresh::No); });
        TRY_COMPARE(m_endings.size(), 3);
        for (const Ending &ending : std::as_const(m_endings))
            QVERIFY(ending.first == Outcome::SignedIn && model().isLogin());
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

        spoil(u"bindGeTui"_s, {{u"status"_s, 500}});
        run();
        const QList<TracedRequest> requests = settled();
        QCOMPARE(requests.size(), 2);
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
        spoil(u"bindGeTui"_s, {{u"times"_s, 1000}, {u"status"_s, 500}});
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
        for (const int asked : {0, 1}) {
            if (asked)
                m_client->account.pushBinding.bindGeTui();
            QCOMPARE(settled().size(), asked);
            m_client->mainQueue.advance(24h);
            QCOMPARE(settled().size(), 0);
        }
    }

    void aDeadSessionAnswersNobody()
    {
        spoil(u"login4H5"_s, {{u"delay_ms"_s, 100}});
        std::make_unique<SilentLogin>(&model(), &m_client->account.requests,
            &m_client->account.session, &m_client->account.pushBinding)
            ->start(Refresh::Yes, UserCheck::Yes,
                [this](Outcome, const QString &) { m_endings.append(Ending()); });
        settled();
        QCOMPARE(m_endings.size(), 0);
        QVERIFY(!model().isLogin());
    }

    void aSessionEndsOnceAndWhatWasBegunInItIsDropped_data()
    {
        Table<bool, bool>::rows({{"the user leaves", true, false},
            {"the login is not accepted", false, false}, {"another signs in", false, true}});
    }

    void aSessionEndsOnceAndWhatWasBegunInItIsDropped()
    {
        const auto [leaves, isReplaced] = Table<bool, bool>::row();
        UserSession &session = m_client->account.session;
        spoil(u"bindGeTui"_s, {{u"times"_s, 10}, {u"status"_s, 500}});
        model().setC_id(u"cid"_s);
        model().setUserName(u"u"_s);
        session.resume();
        QCOMPARE(run().first, Outcome::SignedIn);
        settled();
        const QString token = model().login_token();

        QStringList told; // with the number of cookies saved
        const auto note = [&](const QString &what) {
            told << what + QString::number(m_client->savedCookieNames().size());
        };
        connect(&session, &UserSession::ending, &session, [&] { note(u"ending"_s); });
        connect(&session, &UserSession::ended, &session, [&] { note(u"ended"_s); });
        spoil(u"login4H5"_s, {{u"delay_ms"_s, 100}});
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
        QCOMPARE(told, (QStringList {u"ending2"_s, leaves ? u"ended0"_s : u"ended2"_s}));
        QVERIFY(session.number() != number);
        QCOMPARE(m_endings.size(), 1);
        QCOMPARE(m_endings[0].first, Outcome::Cancelled);

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
            QCOMPARE(told.size(), 2);
        }
    }

    void anotherUserFindsNothingOfTheFormer_data()
    {
        Logins::rows(
            {{"the same", u"school01"_s, u"1"_s, false}, {"nobody named", u"school02"_s, {}, false},
                {"another of the school", u"school01"_s, u"2"_s, true},
                {"the same number at another school", u"school02"_s, u"1"_s, true}});
    }

    void anotherUserFindsNothingOfTheFormer()
    {
        const auto [site, user, isOther] = Logins::row();
        UserSession &session = m_client->account.session;
        HTTPCookieStorage *storage = m_client->cookieStorage;
        const auto held = [](const HTTPCookieStorage &jar) {
            QByteArrayList names;
            for (const QNetworkCookie &cookie : jar.cookies())
                names << cookie.name();
            std::sort(names.begin(), names.end());
            return names.join(' ');
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
        // Later runs know whose the last session was.
        UserSession nextRun(&model(), &m_client->defaults, storage, &m_client->account.ssoCookies,
            &m_client->account.loginResult);
        QStringList changes;
        connect(&nextRun, &UserSession::userChanging, &session, [&] {
            changes << model().userModel->user_id;
            QVERIFY(!model().isLogin());
        });
        m_client->account.requests.setOrganization(site);
        nextRun.begin({nextRun.number(), attempt.cookieMark}, answerFor(user), ChosenRegion());
        QCOMPARE(changes, isOther ? QStringList {u"1"_s} : QStringList());
        QVERIFY(model().isLogin());
        QCOMPARE(held(*storage), isOther ? "tmo"_ba : "page theme tmo"_ba);
        QCOMPARE(m_client->savedCookieNames(), QStringList {u"tmo"_s});
        TRY_COMPARE(held(HTTPCookieStorage(m_client->folder.filePath(u"cookies.json"_s))),
            isOther ? "tmo"_ba : "theme tmo"_ba);
    }

    void whatLiesHereWithoutAKnownUserIsNobodys()
    {
        UserSession &session = m_client->account.session;
        HTTPCookieStorage *storage = m_client->cookieStorage;
        QSignalSpy changes(&session, &UserSession::userChanging);
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
        // From now on somebody is known, if only as nobody: the first to sign in finds all as it
        // is.
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

    void anAnswerKeepsWhatWorks()
    {
        m_client->account.requests.setOrganization(u"school01"_s);
        model().setLogin_token(u"old"_s);
        model().setSchool(u"A"_s);
        model().setProvinces(u"B"_s);
        const std::tuple<QByteArray, QString, QString> rows[] {
            {"{}", u"old"_s, {}},
            {R"({"login_token": null, "redirect_url": null})", u"old"_s, {}},
            {R"({"login_token": {}, "user": [1], "siteInfo": "x", "user_type": {}})", u"old"_s, {}},
            {R"({"login_token": 12, "redirect_url": "h/?a=1;b='2'"})", u"12"_s, u"h/?a=1;b='2'"_s},
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

private:
    using Ending = std::pair<Outcome, QString>;
    using Logins = Table<QString, QString, bool>; // school, user, whether it is another

    static QJsonObject body(const char *answer)
    {
        return {{u"body"_s, QString::fromUtf8(answer).replace(u'\'', u'"')}};
    }
    void spoil(const QString &start, QJsonObject fault)
    {
        fault[u"start"] = start;
        m_platform.addFault(fault);
    }
    void receive(const char *cookie)
    {
        m_client->cookieStorage->setCookiesFromUrl(QNetworkCookie::parseCookies(cookie), host);
    }

    //! Null: it names nobody.
    static QJsonObject answerFor(const QString &userId)
    {
        QJsonObject user {{u"user_name"_s, u"x"_s}};
        if (!userId.isNull())
            user[u"user_id"_s] = userId;
        return {{u"user"_s, user}, {u"login_token"_s, u"token of "_s + userId}};
    }

    LoginModel &model() { return m_client->account.loginModel; }

    void start(Refresh refresh)
    {
        m_client->account.silentLogin.start(
            refresh, UserCheck::Yes, [this](Outcome outcome, const QString &text) {
                m_endings.append({outcome, text});
            });
    }

    Ending run()
    {
        return answerOf<Ending>([this](const auto &then) {
            m_client->account.silentLogin.start(
                Refresh::Yes, UserCheck::Yes, [then](Outcome outcome, const QString &text) {
                    then({outcome, text});
                });
        });
    }

    //! The requests that the platform received, after all of them are answered.
    QList<TracedRequest> settled()
    {
        if (!waitFor([&] { return !m_client->isWaiting(); }))
            qFatal("no answer");
        return m_platform.takeRequests();
    }

    PlatformProcess m_platform;
    std::unique_ptr<SessionClient> m_client;
    QList<Ending> m_endings;
};

QTEST_GUILESS_MAIN(SessionTest)
#include "SessionTest.moc"
