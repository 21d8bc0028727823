#include "login/LoginHarness.h"
#include "login/form/LoginViewModel.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using PatriarchLogin = LoginViewModel::PatriarchLogin;

namespace {

const QStringList completed {u"completed"_s};

}

class LoginViewModelTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewModel> m_viewModel;
    QStringList m_told; // "value", "completed", "error 401 text"

    CommandObserver observer()
    {
        m_told.clear();
        return {[this](const QJsonValue &) { m_told << u"value"_s; },
            [this](const CommandError &error) {
                m_told << u"error %1 %2"_s.arg(error.code).arg(error.msg);
            },
            [this] { m_told << u"completed"_s; }};
    }

    void enter(const QString &account, const QString &password = u"vant1234"_s)
    {
        m_viewModel->setUserCode(account);
        m_viewModel->setUserPassword(password);
    }

    //! What the ordinary login told.
    QStringList login(PatriarchLogin patriarch = PatriarchLogin::No)
    {
        m_viewModel->loginCommand(patriarch, observer());
        const bool atOnce = !m_told.isEmpty();
        return m_harness->callsEnd() && !atOnce ? m_told : QStringList {u"not in time"_s};
    }

private Q_SLOTS:
    void init()
    {
        m_viewModel.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        m_viewModel = std::make_unique<LoginViewModel>(m_harness->environment());
        m_viewModel->setOrganization(u"school01"_s);
    }

    void everythingIsStoredBeforeTheSignInIsTold()
    {
        LoginModel &model = m_harness->loginModel;
        m_viewModel->school = u"厦门实验小学"_s;
        QStringList atSignIn;
        model.observeIsLogin(this, [&](bool isLogin) {
            if (!isLogin)
                return;
            atSignIn << model.login_token() << model.school() << model.userModel->user_name
                     << m_harness->defaults.stringForKey(u"redirect_url"_s);
            QCOMPARE(m_harness->defaults.objectForKey(u"vantCookies"_s).toList().size(), 2);
        });
        enter(u"student01"_s);
        QCOMPARE(login(), completed);
        QVERIFY(model.isLogin() && !model.login_token().isEmpty());
        QCOMPARE(atSignIn,
            (QStringList {model.login_token(), u"厦门实验小学"_s, u"林晓彤"_s,
                model.siteInfo->redirect_url}));
        QCOMPARE(m_harness->askedFor(), QStringList {u"login4H5"_s});
        enter(u"notoken01"_s);
        const QString token = model.login_token();
        QCOMPARE(login(), completed);
        QVERIFY2(model.login_token() == token, "no token leaves the one that works");
    }

    void leavesEverythingAsItWasWhenRefused_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("body"); // null: the platform's own answer
        QTest::addColumn<QString>("event");
        const QString good = u"student01"_s;
        const QString broken = u"error 0 请求错误"_s;
        QTest::newRow("no msg") << u"nomsg01"_s << QString() << u"error 500 (null)"_s;
        QTest::newRow("empty msg")
            << good << u"{\"code\":500,\"msg\":\"\"}"_s << u"error 500 请求错误"_s;
        QTest::newRow("type 5") << u"parent01"_s << QString() << u"error 0 亲，您没有权限登录"_s;
        QTest::newRow("empty body") << good << u""_s << broken;
        QTest::newRow("success without data") << good << u"{\"code\":200}"_s << broken;
        QTest::newRow("unbound, which is no success here")
            << good << u"{\"code\":8888,\"data\":{}}"_s << broken;
    }

    void leavesEverythingAsItWasWhenRefused()
    {
        QFETCH(const QString, account);
        QFETCH(const QString, body);
        LoginModel &model = m_harness->loginModel;
        model.setLogin_token(u"old"_s);
        model.setIsLoginOut(true);
        model.setC_id(u"cid"_s);
        if (!body.isNull())
            m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"body"_s, body}});
        enter(account);
        QTEST(login().join(u','), "event");
        QVERIFY(!model.isLogin() && !model.userModel);
        QCOMPARE(model.login_token(), u"old"_s);
        QVERIFY(!m_harness->defaults.objectForKey(u"vantCookies"_s).isValid());
        // Nor does a session stay that nobody has signed in to.
        QVERIFY(!m_harness->session.cookieStorage->holdsCookieNamed({"mo", "tmo"}));
        QCOMPARE(m_harness->askedFor(), QStringList {u"login4H5"_s});
    }

    void bindsThePushClient_data()
    {
        QTest::addColumn<PatriarchLogin>("patriarch");
        QTest::addColumn<bool>("isLoginOut");
        QTest::addColumn<QString>("c_id");
        QTest::addColumn<QString>("later");
        QTest::addColumn<QStringList>("bound"); // at once, after the wait
        const QStringList never {u"no"_s, u"no"_s}, atOnce {u"yes"_s, u"no"_s};
        const QString cid = u"cid"_s;
        constexpr auto ordinary = PatriarchLogin::No, parents = PatriarchLogin::Yes;
        QTest::newRow("not signed out on purpose") << ordinary << false << cid << cid << never;
        QTest::newRow("ordinary") << ordinary << true << cid << cid << atOnce;
        QTest::newRow("ordinary never waits") << ordinary << true << QString() << cid << never;
        QTest::newRow("parents wait for the client")
            << parents << true << QString() << cid << QStringList {u"no"_s, u"yes"_s};
        QTest::newRow("parents, none came") << parents << true << QString() << QString() << never;
    }

    void bindsThePushClient()
    {
        QFETCH(const PatriarchLogin, patriarch);
        QFETCH(const bool, isLoginOut);
        QFETCH(const QString, c_id);
        QFETCH(const QString, later);
        m_harness->loginModel.setIsLoginOut(isLoginOut);
        m_harness->loginModel.setC_id(c_id);
        enter(u"student01"_s);
        QCOMPARE(login(patriarch), completed);
        const auto bound
            = [this] { return m_harness->askedFor().contains(u"bindGeTui") ? u"yes"_s : u"no"_s; };
        QStringList seen {bound()};
        m_harness->loginModel.setC_id(later);
        m_harness->mainQueue.advance(2999ms);
        QVERIFY(m_harness->manager.connectItems().empty());
        m_harness->mainQueue.advance(1ms);
        QVERIFY(m_harness->callsEnd());
        QTEST(seen << bound(), "bound");
        QVERIFY2(m_harness->loginModel.isLoginOut() == isLoginOut, "a login never takes it back");
    }

    void tellsNobodyOnceItIsGone()
    {
        enter(u"student01"_s);
        m_viewModel->loginCommand(PatriarchLogin::No, observer());
        m_viewModel.reset();
        QVERIFY(m_harness->callsEnd());
        QVERIFY(m_told.isEmpty() && !m_harness->loginModel.isLogin());
    }
};

QTEST_GUILESS_MAIN(LoginViewModelTest)
#include "LoginViewModelTest.moc"
