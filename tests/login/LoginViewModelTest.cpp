#include "login/LoginViewModel.h"
#include "login/LoginHarness.h"
#include "login/Told.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using PatriarchLogin = LoginViewModel::PatriarchLogin;

namespace {

const QJsonObject identity {{u"nick"_s, u"小林"_s}, {u"sign"_s, u"s+1"_s}, {u"open_id"_s, u"o1"_s},
    {u"union_id"_s, u"u1"_s}, {u"timestamp"_s, 1700000000}};

}

class LoginViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void sendsTheNineParameters_data();
    void sendsTheNineParameters();
    void storesALogin();
    void leavesEverythingAsItWasWhenRefused_data();
    void leavesEverythingAsItWasWhenRefused();
    void keepsTheTokenThatWorks();
    void refusesType5OnlyInTheOrdinaryLogin();
    void bindsThePushClient_data();
    void bindsThePushClient();
    void wechatLogin_data();
    void wechatLogin();
    void siteSearch_data();
    void siteSearch();
    void agreementsAndLogo();
    void tellsNobodyOnceItIsGone();
    void loginIsEnabledByAccountPasswordAndSite();

private:
    std::unique_ptr<SandboxProcess> m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewModel> m_viewModel;

    void enter(const QString &account,
        const QString &password = QString::fromLatin1(LoginHarness::password));
};

void LoginViewModelTest::initTestCase()
{
    m_sandbox = std::make_unique<SandboxProcess>(QStringList {u"--schools"_s, u"20"_s});
    QVERIFY(m_sandbox->isRunning());
}

void LoginViewModelTest::init()
{
    m_harness = std::make_unique<LoginHarness>(*m_sandbox);
    m_viewModel = std::make_unique<LoginViewModel>(m_harness->environment());
    m_viewModel->setOrganization(QString::fromLatin1(LoginHarness::school));
}

void LoginViewModelTest::cleanup()
{
    m_viewModel.reset();
    m_harness.reset();
}

void LoginViewModelTest::enter(const QString &account, const QString &password)
{
    m_viewModel->setUserCode(account);
    m_viewModel->setUserPassword(password);
}

void LoginViewModelTest::sendsTheNineParameters_data()
{
    QTest::addColumn<bool>("withIdentity");
    QTest::addColumn<QByteArray>("query");

    QTest::newRow("account alone")
        << false
        << QByteArray("action=gpl%2Fportal&bind_type=&login_type=&start=login4H5"
                      "&user_code=%20a%2Bb&user_pwd=p%26w%3D1%20%25%E5%AF%86");
    QTest::newRow("with a WeChat identity")
        << true
        << QByteArray("action=gpl%2Fportal&bind_type=WEIXIN&login_type=1"
                      "&nick=%E5%B0%8F%E6%9E%97&open_id=o1&sign=s%2B1&start=login4H5"
                      "&timestamp=1700000000&union_id=u1"
                      "&user_code=%20a%2Bb&user_pwd=p%26w%3D1%20%25%E5%AF%86");
}

void LoginViewModelTest::sendsTheNineParameters()
{
    QFETCH(const bool, withIdentity);
    if (withIdentity)
        m_viewModel->authParams = identity;
    enter(u" a+b"_s, u"p&w=1 %密"_s);
    Told told;
    m_viewModel->loginCommand(PatriarchLogin::No, told.observer());
    QVERIFY2(told.events.isEmpty(), "a command never answers from inside its call");
    QTRY_COMPARE(told.events.size(), 1);
    const auto requests = m_sandbox->takeRequests();
    QCOMPARE(requests.size(), 1);
    QTEST(requests.first().query, "query");
}

void LoginViewModelTest::storesALogin()
{
    LoginModel &login = m_harness->loginModel;
    login.setCity(u"厦门"_s);
    m_viewModel->school = u"厦门实验小学"_s;
    m_viewModel->provinces = u"福建"_s;
    QStringList atSignIn;
    login.observeIsLogin(this, [&](bool isLogin) {
        if (isLogin)
            atSignIn << login.login_token() << login.school()
                     << QString::number(
                            m_harness->defaults.objectForKey(u"vantCookies"_s).toList().size());
    });
    enter(u"student01"_s);
    Told told;
    m_viewModel->loginCommand(PatriarchLogin::No, told.observer());
    QTRY_COMPARE(told.events, QStringList {u"completed"_s});

    QVERIFY(login.isLogin());
    QCOMPARE(atSignIn, (QStringList {login.login_token(), u"厦门实验小学"_s, u"2"_s}));
    QVERIFY(!login.login_token().isEmpty());
    QCOMPARE(login.siteCode(), QString::fromLatin1(LoginHarness::school));
    QCOMPARE(login.userModel->user_name, u"林晓彤"_s);
    QCOMPARE(login.user_type, login.userModel->user_type);
    QCOMPARE(login.ssoinfo->ck_LoginName, u"student01"_s);
    QCOMPARE(login.siteInfo->redirect_url, m_harness->defaults.stringForKey(u"redirect_url"_s));
    QVERIFY(login.siteInfo->redirect_url.contains(u"/portal/"));
    QCOMPARE(login.provinces(), u"福建"_s);
    QCOMPARE(login.city(), u"厦门"_s);
    QCOMPARE(m_viewModel->avatarURL.toString(), login.userModel->full_head_url);
    QCOMPARE(m_harness->askedFor(), QStringList {u"login4H5"_s});
}

void LoginViewModelTest::leavesEverythingAsItWasWhenRefused_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<QString>("event");

    const QString good = u"student01"_s;
    QTest::newRow("wrong account")
        << u"nobody"_s << QJsonObject {} << u"error 401 账号或密码错误，请重新输入"_s;
    QTest::newRow("no msg") << u"nomsg01"_s << QJsonObject {} << u"error 500 (null)"_s;
    QTest::newRow("refused type") << u"parent01"_s << QJsonObject {}
                                  << u"error 0 亲，您没有权限登录"_s;
    QTest::newRow("empty body") << good << QJsonObject {{u"body"_s, u""_s}}
                                << u"error 0 请求错误"_s;
    QTest::newRow("no object") << good << QJsonObject {{u"body"_s, u"[1]"_s}}
                               << u"error 0 请求错误"_s;
    QTest::newRow("success without data")
        << good << QJsonObject {{u"body"_s, u"{\"code\":200}"_s}} << u"error 0 请求错误"_s;
    QTest::newRow("an unbound identity is no success here")
        << good << QJsonObject {{u"body"_s, u"{\"code\":8888,\"data\":{}}"_s}}
        << u"error 0 请求错误"_s;
}

void LoginViewModelTest::leavesEverythingAsItWasWhenRefused()
{
    QFETCH(const QString, account);
    QFETCH(QJsonObject, fault);
    LoginModel &login = m_harness->loginModel;
    login.setLogin_token(u"old"_s);
    login.setIsLoginOut(true);
    login.setC_id(u"cid"_s);
    m_harness->defaults.setObject(u"kept"_s, u"vantCookies"_s);
    if (!fault.isEmpty()) {
        fault[u"start"] = u"login4H5"_s;
        m_sandbox->addFault(fault);
    }
    enter(account);
    Told told;
    m_viewModel->loginCommand(PatriarchLogin::No, told.observer());
    QTRY_COMPARE(told.events.size(), 1);
    QTEST(told.events.first(), "event");

    QVERIFY(!login.isLogin());
    QCOMPARE(login.login_token(), u"old"_s);
    QVERIFY(!login.userModel);
    QCOMPARE(m_harness->defaults.objectForKey(u"vantCookies"_s), QVariant(u"kept"_s));
    QCOMPARE(m_harness->askedFor(), QStringList {u"login4H5"_s});
}

void LoginViewModelTest::keepsTheTokenThatWorks()
{
    m_harness->loginModel.setLogin_token(u"old"_s);
    enter(u"notoken01"_s);
    Told told;
    m_viewModel->loginCommand(PatriarchLogin::No, told.observer());
    QTRY_COMPARE(told.events, QStringList {u"completed"_s});
    QVERIFY(m_harness->loginModel.isLogin());
    QCOMPARE(m_harness->loginModel.login_token(), u"old"_s);
}

void LoginViewModelTest::refusesType5OnlyInTheOrdinaryLogin()
{
    enter(u"parent01"_s);
    Told ordinary;
    m_viewModel->bindWechatCommand(ordinary.observer());
    QTRY_COMPARE(ordinary.events, QStringList {u"error 0 亲，您没有权限登录"_s});
    QVERIFY(!m_harness->loginModel.isLogin());

    Told patriarch;
    m_viewModel->loginCommand(PatriarchLogin::Yes, patriarch.observer());
    QTRY_COMPARE(patriarch.events, QStringList {u"completed"_s});
    QVERIFY(m_harness->loginModel.isLogin());
}

void LoginViewModelTest::bindsThePushClient_data()
{
    using Command = std::function<void(LoginViewModel &, CommandObserver)>;
    QTest::addColumn<Command>("command");
    QTest::addColumn<bool>("isLoginOut");
    QTest::addColumn<QString>("c_id");
    QTest::addColumn<QString>("later");
    QTest::addColumn<bool>("boundAtOnce");
    QTest::addColumn<bool>("boundAfterTheWait");

    const Command ordinary = [](LoginViewModel &viewModel, CommandObserver observer) {
        viewModel.loginCommand(PatriarchLogin::No, observer);
    };
    const Command patriarch = [](LoginViewModel &viewModel, CommandObserver observer) {
        viewModel.loginCommand(PatriarchLogin::Yes, observer);
    };
    const Command bindWechat = [](LoginViewModel &viewModel, CommandObserver observer) {
        viewModel.bindWechatCommand(observer);
    };
    const QString cid = u"cid"_s;
    QTest::newRow("not signed out on purpose") << ordinary << false << cid << cid << false << false;
    QTest::newRow("ordinary") << ordinary << true << cid << cid << true << false;
    QTest::newRow("ordinary never waits") << ordinary << true << QString() << cid << false << false;
    QTest::newRow("parents, client known") << patriarch << true << cid << cid << true << false;
    QTest::newRow("parents wait for the client")
        << patriarch << true << QString() << cid << false << true;
    QTest::newRow("parents, none came")
        << patriarch << true << QString() << QString() << false << false;
    QTest::newRow("a WeChat binding waits too")
        << bindWechat << true << QString() << cid << false << true;
}

void LoginViewModelTest::bindsThePushClient()
{
    using Command = std::function<void(LoginViewModel &, CommandObserver)>;
    QFETCH(const Command, command);
    QFETCH(const bool, isLoginOut);
    QFETCH(const QString, c_id);
    QFETCH(const QString, later);
    QFETCH(const bool, boundAtOnce);
    QFETCH(const bool, boundAfterTheWait);
    m_harness->loginModel.setIsLoginOut(isLoginOut);
    m_harness->loginModel.setC_id(c_id);
    enter(u"student01"_s);
    Told told;
    command(*m_viewModel, told.observer());
    QTRY_COMPARE(told.events, QStringList {u"completed"_s});
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QCOMPARE(m_harness->askedFor().contains(u"bindGeTui"_s), boundAtOnce);

    m_harness->loginModel.setC_id(later);
    m_harness->mainQueue.advance(2999ms);
    QVERIFY(m_harness->manager.connectItems().empty());
    m_harness->mainQueue.advance(1ms);
    QCOMPARE(m_harness->manager.connectItems().empty(), !boundAfterTheWait);
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QCOMPARE(m_harness->askedFor().contains(u"bindGeTui"_s), boundAfterTheWait);
    QVERIFY2(m_harness->loginModel.isLoginOut() == isLoginOut, "a login never takes it back");
}

void LoginViewModelTest::wechatLogin_data()
{
    QTest::addColumn<QJsonObject>("answer");
    QTest::addColumn<PatriarchLogin>("patriarch");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<bool>("signedIn");

    const QJsonObject user {{u"user"_s, QJsonObject {{u"user_type"_s, 5}}}};
    QTest::newRow("bound") << QJsonObject {{u"code"_s, 200}, {u"data"_s, user}}
                           << PatriarchLogin::No << u"1"_s << QStringList {u"completed"_s} << true;
    QTest::newRow("bound, parents")
        << QJsonObject {{u"code"_s, 200}, {u"data"_s, user}} << PatriarchLogin::Yes << u"2"_s
        << QStringList {u"completed"_s} << true;
    QTest::newRow("unbound") << QJsonObject {{u"code"_s, 8888}, {u"data"_s, identity}}
                             << PatriarchLogin::No << u"1"_s
                             << QStringList {u"value"_s, u"completed"_s} << false;
    QTest::newRow("refused") << QJsonObject {{u"code"_s, 40163}, {u"msg"_s, u"失效"_s}}
                             << PatriarchLogin::No << u"1"_s << QStringList {u"error 40163 失效"_s}
                             << false;
}

void LoginViewModelTest::wechatLogin()
{
    QFETCH(const QJsonObject, answer);
    QFETCH(const PatriarchLogin, patriarch);
    QFETCH(const QString, type);
    QFETCH(const bool, signedIn);
    m_sandbox->setAnswer({{u"start"_s, u"login4AppWeixin"_s}, {u"envelope"_s, answer}});
    m_viewModel->authCode = u"code 1"_s;
    Told told;
    m_viewModel->wechatLoginCommand(patriarch, told.observer());
    QTRY_VERIFY(!told.events.isEmpty());
    QTEST(told.events, "events");
    QCOMPARE(m_harness->loginModel.isLogin(), signedIn);
    const auto requests = m_sandbox->takeRequests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().value(u"code"_s), u"code 1"_s);
    QCOMPARE(requests.first().value(u"type"_s), type);
    if (told.events.contains(u"value"_s))
        QCOMPARE(told.value.toObject(), identity);
}

void LoginViewModelTest::siteSearch_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<QStringList>("events");

    QTest::newRow("found") << u"school01"_s << qsizetype(1)
                           << QStringList {u"value"_s, u"completed"_s};
    QTest::newRow("an empty list is a value, and then an error")
        << u"nowhere"_s << qsizetype(0) << QStringList {u"value"_s, u"error 0 没有该学校"_s};
}

void LoginViewModelTest::siteSearch()
{
    QFETCH(const QString, key);
    QFETCH(const qsizetype, count);
    m_viewModel->sites = {u"of an earlier search"_s};
    Told told;
    m_viewModel->requestSiteCommand(key, told.observer());
    QTRY_COMPARE(told.events.size(), 2);
    QTEST(told.events, "events");
    QCOMPARE(m_viewModel->sites.size(), count);
    QCOMPARE(told.value.toArray(), m_viewModel->sites);
}

void LoginViewModelTest::agreementsAndLogo()
{
    const QStringList valueThenEnd {u"value"_s, u"completed"_s};
    Told user, privacy, logo, unknown;
    m_viewModel->requestAgreementUser(user.observer());
    QTRY_COMPARE(user.events, valueThenEnd);
    QVERIFY(user.value[u"url"].toString().endsWith(u"user.html"));
    m_viewModel->requestAgreementPrivacy(privacy.observer());
    QTRY_COMPARE(privacy.events, valueThenEnd);
    QVERIFY(privacy.value[u"url"].toString().endsWith(u"privacy.html"));
    m_viewModel->logoCommand(u"school01"_s, logo.observer());
    QTRY_COMPARE(logo.events, valueThenEnd);
    QVERIFY(logo.value[u"h5_logo"].toString().startsWith(u"http"));
    m_viewModel->logoCommand(u"nowhere"_s, unknown.observer());
    QTRY_COMPARE(unknown.events, QStringList {u"error 404 学校不存在"_s});
}

void LoginViewModelTest::tellsNobodyOnceItIsGone()
{
    enter(u"student01"_s);
    Told told;
    m_viewModel->loginCommand(PatriarchLogin::No, told.observer());
    m_viewModel.reset();
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QVERIFY(told.events.isEmpty());
    QVERIFY(!m_harness->loginModel.isLogin());
}

void LoginViewModelTest::loginIsEnabledByAccountPasswordAndSite()
{
    QSignalSpy enabled(m_viewModel.get(), &LoginViewModel::loginEnableSignal);
    m_viewModel->setOrganization({});
    enter(u"a"_s, u"p"_s);
    QCOMPARE(enabled.takeLast().first().toBool(), false);
    m_viewModel->setOrganization(u"school01"_s);
    QCOMPARE(enabled.takeLast().first().toBool(), true);
    m_viewModel->setUserPassword(u""_s);
    QCOMPARE(enabled.takeLast().first().toBool(), false);
}

QTEST_GUILESS_MAIN(LoginViewModelTest)
#include "LoginViewModelTest.moc"
