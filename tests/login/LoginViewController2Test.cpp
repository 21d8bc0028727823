#include "login/LoginViewController2.h"
#include "login/AuthLoginViewController.h"
#include "login/ChooseSchoolViewController.h"
#include "login/LoginHarness.h"
#include "support/Patience.h"
#include "ui/NavigationController.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString notAgreed = u"请勾选已阅读同意《用户协议》和《隐私政策》"_s;

}

//! The login screen's controller and the chooser it presents, without a window.
class LoginViewController2Test : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController2> m_login;

    //! The screen as it stands when it has appeared.
    void start(const QString &school = u"厦门实验小学"_s, const QString &siteCode = u"school01"_s,
        bool isPatriarch = false)
    {
        m_harness->loginModel.setSchool(school);
        m_harness->loginModel.setSiteCode(siteCode);
        LoginEnvironment environment = m_harness->environment();
        environment.isPatriarch = isPatriarch;
        m_login = std::make_unique<LoginViewController2>(environment);
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
        m_login.reset();
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        for (const QString &screen : {u"ChooseSchoolScreen"_s, u"AuthLoginScreen"_s})
            m_harness->shell.navigator()->registerScreen(screen, QUrl(u"qrc:/x"_s));
    }

    void checksInOrder_data()
    {
        QTest::addColumn<bool>("reachable");
        QTest::addColumn<QString>("siteCode");
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("toast");
        const QString site = u"school01"_s;
        QTest::newRow("network") << false << QString() << u""_s << u""_s << u"没有网络连接..."_s;
        QTest::newRow("school") << true << QString() << u""_s << u""_s << u"请选择学校"_s;
        QTest::newRow("account") << true << site << u""_s << u""_s << u"请输入您的账号"_s;
        QTest::newRow("password") << true << site << u" "_s << u""_s << u"请输入您的密码"_s;
        QTest::newRow("agreement") << true << site << u"a"_s << u"p"_s << notAgreed;
    }

    void checksInOrder()
    {
        QFETCH(const bool, reachable);
        QFETCH(const QString, siteCode);
        QFETCH(const QString, account);
        QFETCH(const QString, password);
        using Status = NetworkReachabilityManager::Status;
        m_harness->reachability.status = reachable ? Status::Unknown : Status::NotReachable;
        start({}, siteCode);
        m_login->setAccount(account);
        m_login->setPassword(password);
        m_login->login();
        QTEST(m_harness->toast(), "toast");
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());
        QCOMPARE(m_harness->askedFor(), QStringList());
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

    void aMessageWaitsForTheLaunchAdAndIsShownOnce()
    {
        start();
        m_harness->launchAdShowing = true;
        m_login->setMessage(u"请重新登录"_s);
        QVERIFY(m_harness->toast().isNull());
        m_harness->notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
        QCOMPARE(m_harness->toast(), u"请重新登录"_s);
        m_harness->mainQueue.advance(2s);
        m_harness->notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
        QVERIFY(m_harness->toast().isNull());
    }

    void anAgreementIsAskedForOnceAndMayBeMissing_data()
    {
        QTest::addColumn<QString>("envelope");
        QTest::addColumn<QString>("toast");
        QTest::newRow("refused") << u"{\"code\":500,\"msg\":\"维护中\"}"_s << u"维护中"_s;
        QTest::newRow("no address")
            << u"{\"code\":200,\"data\":[]}"_s << u"页面地址无效，请稍后再试"_s;
    }

    void anAgreementIsAskedForOnceAndMayBeMissing()
    {
        QFETCH(const QString, envelope);
        start();
        m_sandbox.addFault({{u"start"_s, u"agreement"_s}, {u"body"_s, envelope}});
        m_login->didSelectLink(u"privacy"_s);
        m_login->didSelectLink(u"privacy"_s);
        QVERIFY(m_harness->callsEnd());
        QTEST(m_harness->toast(), "toast");
        QCOMPARE(m_harness->askedFor(), QStringList {u"agreement"_s});
    }

    void aFailedListIsTriedAgainAndItsSchoolTakenOver()
    {
        start();
        m_sandbox.addFault({{u"start"_s, u"cndSite"_s}, {u"times"_s, 1},
            {u"body"_s, u"{\"code\":503,\"msg\":\"维护中\"}"_s}});
        m_login->chooseSchool();
        const auto *frame = qobject_cast<NavigationController *>(
            m_harness->shell.navigator()->topViewController());
        QVERIFY(frame);
        auto *chooser = qobject_cast<ChooseSchoolViewController *>(frame->topViewController());
        using State = ChooseSchoolViewController::State;
        chooser->viewDidLoad();
        TRY_COMPARE(chooser->state(), State::Failed);
        QCOMPARE(chooser->failureText(), u"维护中"_s);
        QVERIFY(m_harness->toast().isNull());
        chooser->load();
        chooser->didSelectRow(0);
        TRY_COMPARE(chooser->state(), State::Loaded);
        QVERIFY(m_harness->loginModel.qeCDN().endsWith(u"/qe/"));

        chooser->textDidChange(u"本地部署"_s);
        TRY_COMPARE(chooser->schools()->rowCount(), 1);
        const DataModel school = *chooser->schools()->schoolAt(0);
        m_harness->calls();
        chooser->didSelectRow(0);
        chooser->didSelectRow(0);
        QCOMPARE(m_login->schoolText(), school.aName);
        QCOMPARE(m_harness->requests.getCurrentOrganization(), u"local01"_s);
        QVERIFY(m_harness->loginModel.isLocal() && m_login->isWechatLoginHidden());
        QVERIFY(school.url.startsWith(m_sandbox.address(PlatformProcess::Local)));
        QCOMPARE(m_harness->loginModel.localUrl(), school.url);
        QCOMPARE(m_harness->loginModel.localUrlQe(), school.url_qe);
        QVERIFY2(m_harness->loginModel.siteCode() == u"school01", "kept by a login alone");
        QVERIFY(m_harness->callsEnd());
        const auto requests = m_harness->calls();
        QVERIFY(!requests.isEmpty());
        QCOMPARE(requests[0].value(u"start"_s), u"getSetting4App"_s);
        QCOMPARE(requests[0].value(u"site_id"_s), school.site_id);
    }

    void wechatNeedsSchoolAndAgreement()
    {
        start({});
        m_login->wechatLogin();
        QVERIFY2(m_harness->toast() == u"请先选择学校", "a code without a name is no choice");
        start();
        m_login->wechatLogin();
        QCOMPARE(m_harness->toast(), notAgreed);
        QVERIFY(m_harness->wxApi.asked.isEmpty());
        m_login->checkUserInstructions();
        m_login->wechatLogin();
        QCOMPARE(m_harness->wxApi.asked, QStringList {u"snsapi_userinfo 123"_s});
    }

    void handlesWechatAnswers_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("isPatriarch");
        QTest::addColumn<QString>("envelope"); // null: none is asked for
        QTest::addColumn<QString>("result"); // the toast, or whose page is opened, or a sign-in
        const QString bound = u"{\"code\":200,\"data\":{\"user\":{\"user_type\":5}}}"_s;
        QTest::newRow("bound, of any type") << u"123"_s << false << bound << u"signed in"_s;
        QTest::newRow("bound, parents") << u"123"_s << true << bound << u"signed in"_s;
        QTest::newRow("unbound") << u"123"_s << false
                                 << u"{\"code\":8888,\"data\":{\"nick\":\"小林\"}}"_s
                                 << u"binds 厦门实验小学"_s;
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
        const auto *frame = qobject_cast<NavigationController *>(
            m_harness->shell.navigator()->topViewController());
        const auto *binding
            = frame ? qobject_cast<AuthLoginViewController *>(frame->topViewController()) : nullptr;
        const QString jumped = binding ? u"binds "_s + binding->school : QString();
        const QString signedIn = m_harness->loginModel.isLogin() ? u"signed in"_s : QString();
        QTEST(m_harness->toast() + jumped + signedIn, "result");
        const auto calls = m_harness->calls();
        QCOMPARE(calls.size(), envelope.isNull() ? 0 : 1);
        QVERIFY(calls.isEmpty() || calls[0].value(u"code"_s) == u"c 1");
        QVERIFY(calls.isEmpty() || calls[0].value(u"type"_s) == (isPatriarch ? u"2"_s : u"1"_s));
    }
};

QTEST_MAIN(LoginViewController2Test)
#include "LoginViewController2Test.moc"
