#include "login/LoginHarness.h"
#include "login/school/ChooseSchoolViewController.h"
#include "login/school/LoginViewController2.h"
#include "login/wechat/AuthLoginViewController.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/services/BrowserWXApi.h"
#include "support/NotedUrlOpener.h"
#include "support/Patience.h"
#include "ui/navigation/NavigationController.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString appId = u"wx3f5a9c2e7b1d4068"_s;

}

//! The login screen's controller and the chooser it presents, without a window.
class LoginViewController2Test : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    NotedUrlOpener m_browser;
    std::unique_ptr<BrowserWXApi> m_wxApi;
    std::unique_ptr<LoginViewController2> m_login;
    std::unique_ptr<NavigationController> m_navigation;
    ViewController m_home;

    template <typename Controller>
    Controller *presented() const
    {
        const auto *frame = qobject_cast<NavigationController *>(
            m_harness->shell.navigator()->topViewController());
        return frame ? qobject_cast<Controller *>(frame->topViewController()) : nullptr;
    }
    AuthLoginViewController *binding() const { return presented<AuthLoginViewController>(); }

    // What this link of WeChat's authorisation page leads to.
    QUrl askWeChat(const QString &link)
    {
        m_login->checkUserInstructions();
        m_login->wechatLogin();
        const auto page = answerOf<HTTPResponse>([&](const auto &then) {
            HTTPSessionManager(&m_harness->network)
                .GET(m_browser.opened.takeLast().toString(), {}, then,
                    [then](const HTTPResponse &, const HTTPError &) { then({}); });
        });
        const QRegularExpression href(u"id=\"%1\" href=\"([^\"]*)\""_s.arg(link));
        return QUrl(
            href.match(QString::fromUtf8(page.body)).captured(1).replace(u"&amp;"_s, u"&"_s));
    }

    // As a start of the client makes it.
    void makeWXApi()
    {
        m_wxApi = std::make_unique<BrowserWXApi>(
            &m_browser, nullptr, &m_harness->defaults, m_sandbox.address() + u"wechat/authorise"_s);
        QVERIFY(m_wxApi->registerApp(appId, u"https://u.example/app/"_s));
        connect(m_wxApi.get(), &WXApi::onResp, this, [this](const SendAuthResp &response) {
            m_harness->notifications.postNotificationName(u"WechatAuthCode"_s,
                QVariantMap {{u"code"_s, response.code}, {u"state"_s, response.state}});
        });
    }

    //! Chooses a school with a server of its own.
    DataModel chooseLocalSchool(ChooseSchoolViewController *chooser)
    {
        chooser->textDidChange(u"本地部署"_s);
        if (!waitFor([&] { return chooser->schools()->rowCount() == 1; }))
            qWarning("the list was not filtered");
        const DataModel school = chooser->schools()->schoolAt(0).value_or(DataModel());
        m_harness->calls();
        // A touch too many.
        chooser->didSelectRow(0);
        chooser->didSelectRow(0);
        return school;
    }

    ChooseSchoolViewController *openSchools()
    {
        m_login->chooseSchool();
        auto *chooser = presented<ChooseSchoolViewController>();
        chooser->viewDidLoad();
        return chooser;
    }

    //! The screen as it stands when it has appeared.
    void start(const QString &school = u"厦门实验小学"_s, const QString &siteCode = u"school01"_s,
        bool isPatriarch = false)
    {
        m_harness->loginModel.setSchool(school);
        m_harness->loginModel.setSiteCode(siteCode);
        LoginEnvironment environment = m_harness->environment();
        environment.isPatriarch = isPatriarch;
        environment.device.wxApi = m_wxApi.get();
        m_navigation.reset();
        m_login = std::make_unique<LoginViewController2>(environment);
        Navigator *navigator = m_harness->shell.navigator();
        m_navigation = std::make_unique<NavigationController>(
            navigator, m_login->screenName(), m_login.get());
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
        m_login->viewDidLoad();
        m_login->viewDidAppear();
        QVERIFY(m_harness->callsEnd());
        m_harness->calls();
    }

    void fill(const QString &account, const QString &password)
    {
        m_login->setAccount(account);
        m_login->setPassword(password);
        m_login->checkUserInstructions();
    }

private Q_SLOTS:
    void init()
    {
        m_navigation.reset();
        m_login.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        m_browser.opened.clear();
        makeWXApi();
        m_harness->shell.navigator()->setAnimated(false);
        for (const QString &screen :
            {u"LoginScreen"_s, u"HomeScreen"_s, u"ChooseSchoolScreen"_s, u"AuthLoginScreen"_s})
            m_harness->shell.navigator()->registerScreen(screen, QUrl(u"qrc:/x"_s));
    }

    void whatALoginLeavesOnDiskOpensNoSession()
    {
        start();
        fill(u"student01"_s, u"vant1234"_s);
        m_login->login();
        TRY_VERIFY(m_harness->loginModel.isLogin());
        QByteArrayList secrets {"vant1234", m_harness->loginModel.login_token().toUtf8()};
        for (const QNetworkCookie &cookie : m_harness->session.cookieStorage->cookies()) {
            if (cookie.name() == "mo" || cookie.name() == "tmo")
                secrets << cookie.value();
        }
        const QString path = m_harness->session.folder.filePath(u"settings.ini"_s);
        for (const QString &key :
            {u"loginTokenForST"_s, u"passwordForST"_s, u"vantCookies"_s, u"MiPushUsingCookie"_s}) {
            QVERIFY2(m_harness->defaults.objectForKey(key).isValid(), qPrintable(key));
            TRY_VERIFY(QSettings(path, QSettings::IniFormat).contains(key));
        }
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray left = file.readAll();
        QVERIFY(left.contains("student01") && secrets.size() == 4);
        for (const QByteArray &secret : std::as_const(secrets))
            QVERIFY2(!secret.isEmpty() && !left.contains(secret), secret);
    }

    void oneLoginAtATimeAndItsErrorHalfASecondLater()
    {
        start();
        fill(u"  "_s, u" "_s);
        const int waiting = m_harness->mainQueue.waiting();
        m_login->login();
        m_login->login();
        TRY_COMPARE(m_harness->mainQueue.waiting(), waiting + 1);
        m_login->login();
        m_harness->mainQueue.advance(499ms);
        QVERIFY(m_harness->toast().isNull() && m_harness->shell.progressHUD()->isVisible());
        m_harness->mainQueue.advance(1ms);
        QCOMPARE(m_harness->toast(), u"账号或密码错误，请重新输入"_s);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        const auto requests = m_harness->calls();
        QCOMPARE(requests.size(), 1);
        QVERIFY2(requests[0].value(u"user_code"_s) == u"  ", "blanks are the server's to judge");
        m_login->login();
        QVERIFY(m_harness->callsEnd());
        QCOMPARE(m_harness->askedFor(), QStringList {u"login4H5"_s});
    }

    void aFailedListIsTriedAgainAndItsSchoolTakenOver()
    {
        start();
        m_sandbox.addFault({{u"start"_s, u"cndSite"_s}, {u"times"_s, 1},
            {u"body"_s, u"{\"code\":503,\"msg\":\"维护中\"}"_s}});
        using State = ChooseSchoolViewController::State;
        ChooseSchoolViewController *chooser = openSchools();
        TRY_COMPARE(chooser->state(), State::Failed);
        QCOMPARE(chooser->failureText(), u"维护中"_s);
        QVERIFY(m_harness->toast().isNull());
        chooser->load();
        chooser->didSelectRow(0);
        TRY_COMPARE(chooser->state(), State::Loaded);
        QVERIFY(m_harness->loginModel.qeCDN().endsWith(u"/qe/"));

        const DataModel school = chooseLocalSchool(chooser);
        QCOMPARE(m_login->schoolText(), school.aName);
        QCOMPARE(m_harness->requests.getCurrentOrganization(), u"local01"_s);
        QVERIFY(m_harness->loginModel.isLocal() && m_login->isWechatLoginHidden());
        QVERIFY(school.url.startsWith(m_sandbox.address(PlatformProcess::Local)));
        QCOMPARE(m_harness->loginModel.localUrl(), school.url);
        QCOMPARE(m_harness->loginModel.localUrlQe(), school.url_qe);
        QVERIFY2(m_harness->loginModel.siteCode() == u"school01", "kept by a login alone");
        QVERIFY(m_harness->callsEnd());
        QCOMPARE(m_harness->calls().value(0).value(u"site_id"_s), school.site_id);
    }

    void handlesWechatAnswers_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("isPatriarch");
        QTest::addColumn<QString>("envelope"); // null: none is asked for
        QTest::addColumn<QString>("result"); // the toast, or a sign-in
        const QString bound = u"{\"code\":200,\"data\":{\"user\":{\"user_type\":5}}}"_s;
        QTest::newRow("bound, of any type") << u"123"_s << false << bound << u"signed in"_s;
        QTest::newRow("bound, parents") << u"123"_s << true << bound << u"signed in"_s;
        QTest::newRow("refused") << u"123"_s << false << u"{\"code\":1,\"msg\":\"失效\"}"_s
                                 << u"失效"_s;
        QTest::newRow("a foreign state") << u"1234"_s << false << QString() << u"授权失败"_s;
        QTest::newRow("a page's answer") << u"8888"_s << false << QString() << QString();
    }

    void handlesWechatAnswers()
    {
        QFETCH(const QString, state);
        QFETCH(const bool, isPatriarch);
        QFETCH(const QString, envelope);
        start(u"厦门实验小学"_s, u"school01"_s, isPatriarch);
        if (!envelope.isNull())
            m_sandbox.addFault({{u"start"_s, u"login4AppWeixin"_s}, {u"body"_s, envelope}});
        m_harness->notifications.postNotificationName(
            u"WechatAuthCode"_s, QVariantMap {{u"code"_s, u"c 1"_s}, {u"state"_s, state}});
        QVERIFY(m_harness->callsEnd());
        const QString signedIn = m_harness->loginModel.isLogin() ? u"signed in"_s : QString();
        QTEST(m_harness->toast() + signedIn, "result");
        const auto calls = m_harness->calls();
        QCOMPARE(calls.size(), envelope.isNull() ? 0 : 1);
        QVERIFY(calls.isEmpty() || calls[0].value(u"code"_s) == u"c 1");
        QVERIFY(calls.isEmpty() || calls[0].value(u"type"_s) == (isPatriarch ? u"2"_s : u"1"_s));
    }

    void signsInToTheSchoolThatWasAskedFor_data()
    {
        QTest::addColumn<bool>("restarted");
        QTest::newRow("another was chosen meanwhile") << false;
        QTest::newRow("the answer starts the client") << true;
    }

    void signsInToTheSchoolThatWasAskedFor()
    {
        QFETCH(const bool, restarted);
        start();
        const QUrl answer = askWeChat(u"btn-agree"_s);
        ChooseSchoolViewController *chooser = openSchools();
        TRY_COMPARE(chooser->state(), ChooseSchoolViewController::State::Loaded);
        chooseLocalSchool(chooser);
        QVERIFY(m_harness->loginModel.isLocal() && m_harness->callsEnd());
        if (restarted) {
            makeWXApi();
            start(u"别的学校"_s, u"school02"_s);
        }
        m_harness->calls();
        QVERIFY(m_wxApi->handleOpenURL(answer));
        QVERIFY2(m_harness->shell.progressHUD()->isVisible(), "no other school can be chosen now");
        TRY_VERIFY(m_harness->loginModel.isLogin());
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        const auto calls = m_harness->calls();
        const auto login = std::find_if(calls.begin(), calls.end(),
            [](const auto &call) { return call.value(u"start"_s) == u"login4AppWeixin"; });
        QVERIFY(login != calls.end());
        QCOMPARE(login->path, u"/school01/do"_s);
        QCOMPARE(login->host, m_sandbox.authority(PlatformProcess::Rb));
        QCOMPARE(m_harness->loginModel.siteCode(), u"school01"_s);
        QCOMPARE(m_harness->loginModel.school(), u"厦门实验小学"_s);
        QVERIFY(!m_harness->loginModel.isLocal());
        QCOMPARE(m_login->schoolText(), u"厦门实验小学"_s);
    }

    void leavesAnswersThatComeTooLateAlone_data()
    {
        using Change = std::function<void(LoginViewController2Test &)>;
        QTest::addColumn<Change>("meanwhile");
        QTest::addColumn<QStringList>("asked");
        const auto row
            = [](const char *name, const Change &meanwhile, const QStringList &asked = {}) {
                  QTest::newRow(name) << meanwhile << asked;
              };
        row("signed in by password", [](auto &test) {
            test.m_harness->loginModel.setLogin_token(u"token"_s);
            test.m_harness->loginModel.setIsLogin(true);
            test.m_harness->session.account.session.resume();
        });
        row("a password is on its way",
            [](auto &test) {
                test.m_login->setAccount(u"student02"_s);
                test.m_login->setPassword(u"vant1234"_s);
                test.m_login->login();
            },
            {u"login4H5"_s});
        row("another flow is shown", [](auto &test) {
            test.m_harness->shell.navigator()->setRootViewController(u"HomeScreen"_s, &test.m_home);
        });
    }

    void leavesAnswersThatComeTooLateAlone()
    {
        QFETCH(const std::function<void(LoginViewController2Test &)>, meanwhile);
        start();
        const QUrl answer = askWeChat(u"btn-agree"_s);
        meanwhile(*this);
        QVERIFY(m_wxApi->handleOpenURL(answer));
        QVERIFY(m_harness->callsEnd());
        QTEST(m_harness->askedFor(), "asked");
        QVERIFY(m_harness->toast().isNull() && !binding());
    }

    void theBindingScreenStaysWhenNobodySignsIn()
    {
        start();
        // As an account leaves it that was given no token.
        m_harness->loginModel.setIsLogin(true);
        m_login->jumpToAuthVC({{u"nick"_s, u"小林"_s}});
        QVERIFY(binding());
        binding()->viewDidLoad();
        QVERIFY(binding());
        m_harness->loginModel.setIsLogin(false);
        QVERIFY(binding());
        m_harness->loginModel.setIsLogin(true);
        TRY_VERIFY(!binding());
    }

    void oneLoginBindsAndSignsIn()
    {
        start();
        const QUrl answer = askWeChat(u"btn-agree-new"_s);
        QVERIFY(m_wxApi->handleOpenURL(answer));
        TRY_VERIFY(binding());
        AuthLoginViewController *screen = binding();
        screen->viewDidLoad();
        screen->setAccount(u"student02"_s);
        screen->setPassword(u"vant1234"_s);
        screen->login();
        QCOMPARE(m_harness->toast(), u"请勾选已阅读同意《用户协议》和《隐私政策》"_s);
        screen->checkUserInstructions();
        m_harness->calls();
        screen->login();
        TRY_VERIFY(m_harness->loginModel.isLogin());
        TRY_VERIFY(!binding());
        const auto calls = m_harness->calls();
        QCOMPARE(calls.constFirst().value(u"bind_type"_s), u"WEIXIN"_s);
        QCOMPARE(calls.constFirst().value(u"nick"_s), u"夏天的风"_s);
        QCOMPARE(m_harness->loginModel.school(), u"厦门实验小学"_s);
        QCOMPARE(m_harness->loginModel.userName(), u"student02"_s);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
    }
};

QTEST_MAIN(LoginViewController2Test)
#include "LoginViewController2Test.moc"
