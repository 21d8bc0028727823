#include "login/LoginControllerFixture.h"
#include "ui/NavigationController.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString noSchool = u"选择学校"_s;
const QString notAgreed = u"请勾选已阅读同意《用户协议》和《隐私政策》"_s;

}

class LoginViewController2Test : public LoginControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsFromTheStoredState_data();
    void startsFromTheStoredState();
    void checksInOrder_data();
    void checksInOrder();
    void anErrorIsShownHalfASecondLater();
    void aSecondTapWhileALoginRunsDoesNothing();
    void aLoginIsKeptAndTheFieldsEmptied();
    void blanksGoToTheServer();
    void theAgreementIsUncheckedOnEveryAppearance();
    void aMessageWaitsForTheLaunchAd();
    void opensTheAgreements_data();
    void opensTheAgreements();
    void showsTheForgottenPasswordNotice();
};

void LoginViewController2Test::startsFromTheStoredState_data()
{
    QTest::addColumn<QString>("school");
    QTest::addColumn<QString>("siteCode");
    QTest::addColumn<bool>("hidden");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("asked");

    QTest::newRow("fresh") << QString() << QString() << false << noSchool << QStringList {};
    QTest::newRow("chosen earlier") << u"厦门实验小学"_s << u"school01"_s << false
                                    << u"厦门实验小学"_s << QStringList {u"getSetting4App"_s};
    QTest::newRow("a local school") << u"长乐数智学校"_s << u"local01"_s << true
                                    << u"长乐数智学校"_s << QStringList {u"getSetting4App"_s};
}

void LoginViewController2Test::startsFromTheStoredState()
{
    QFETCH(const QString, school);
    QFETCH(const QString, siteCode);
    QFETCH(const bool, hidden);
    m_harness->loginModel.setSchool(school);
    m_harness->loginModel.setSiteCode(siteCode);
    m_harness->loginModel.setIsHiddenWechatLogin(hidden);
    m_login = std::make_unique<LoginViewController2>(m_harness->environment());
    m_login->viewDidLoad();

    QTEST(m_login->schoolText(), "text");
    QCOMPARE(m_login->isSchoolChosen(), !school.isEmpty());
    QCOMPARE(m_login->isWechatLoginHidden(), hidden);
    QCOMPARE(m_harness->requests.getCurrentOrganization(), siteCode);
    QVERIFY(m_login->prefersNavigationBarHidden());
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QStringList operations = m_harness->askedFor();
    operations.removeAll(QString());
    QTEST(operations, "asked");
}

void LoginViewController2Test::checksInOrder_data()
{
    QTest::addColumn<bool>("reachable");
    QTest::addColumn<QString>("siteCode");
    QTest::addColumn<QString>("account");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("toast");

    QTest::newRow("network") << false << QString() << u""_s << u""_s << u"没有网络连接..."_s;
    QTest::newRow("school") << true << QString() << u""_s << u""_s << u"请选择学校"_s;
    QTest::newRow("account") << true << u"school01"_s << u""_s << u""_s << u"请输入您的账号"_s;
    QTest::newRow("password") << true << u"school01"_s << u" "_s << u""_s << u"请输入您的密码"_s;
    QTest::newRow("agreement") << true << u"school01"_s << u"a"_s << u"p"_s << notAgreed;
}

void LoginViewController2Test::checksInOrder()
{
    QFETCH(const bool, reachable);
    QFETCH(const QString, siteCode);
    QFETCH(const QString, account);
    QFETCH(const QString, password);
    using Status = NetworkReachabilityManager::Status;
    m_harness->reachability.status = reachable ? Status::ReachableViaWiFi : Status::NotReachable;
    m_harness->loginModel.setSiteCode(siteCode);
    m_login = std::make_unique<LoginViewController2>(m_harness->environment());
    m_login->viewDidLoad();
    m_harness->requests.setOrganization(u"another"_s);
    m_login->setAccount(account);
    m_login->setPassword(password);
    m_login->login();
    QTEST(m_harness->toast(), "toast");
    QCOMPARE(m_harness->shell.toast()->kind(), Toast::Kind::Error);
    QVERIFY(!m_harness->shell.progressHUD()->isVisible());
    QCOMPARE(m_login->account(), account);
    QCOMPARE(
        m_harness->requests.getCurrentOrganization(), siteCode.isEmpty() ? u"another"_s : siteCode);
}

void LoginViewController2Test::anErrorIsShownHalfASecondLater()
{
    start();
    QSignalSpy endEditing(m_login.get(), &LoginViewController2::endEditing);
    fill(u"student01"_s, u"wrong"_s);
    m_login->login();
    QCOMPARE(endEditing.size(), 1);
    QCOMPARE(m_harness->shell.progressHUD()->text(), u"登录中"_s);
    const int waitingBefore = m_harness->mainQueue.waiting();
    QTRY_COMPARE(m_harness->mainQueue.waiting(), waitingBefore + 1);
    m_harness->mainQueue.advance(499ms);
    QVERIFY(m_harness->toast().isNull());
    QVERIFY(m_harness->shell.progressHUD()->isVisible());
    m_harness->mainQueue.advance(1ms);
    QCOMPARE(m_harness->toast(), u"账号或密码错误，请重新输入"_s);
    QVERIFY(!m_harness->shell.progressHUD()->isVisible());
    QCOMPARE(m_login->account(), u"student01"_s);
    QVERIFY(m_login->isUserInstructionsSelected());
}

void LoginViewController2Test::aSecondTapWhileALoginRunsDoesNothing()
{
    start();
    fill(u"student01"_s, u"wrong"_s);
    const int waitingBefore = m_harness->mainQueue.waiting();
    m_login->login();
    m_login->login();
    QTRY_COMPARE(m_harness->mainQueue.waiting(), waitingBefore + 1);
    m_login->login();
    m_harness->mainQueue.advance(500ms);
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QCOMPARE(m_harness->askedFor().count(u"login4H5"_s), 1);
    m_login->login();
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QCOMPARE(m_harness->askedFor().count(u"login4H5"_s), 1);
}

void LoginViewController2Test::aLoginIsKeptAndTheFieldsEmptied()
{
    start();
    m_harness->loginModel.setIsLocal(true);
    fill(u"student01"_s, QString::fromLatin1(LoginHarness::password));
    m_harness->loginModel.setIsLocal(false);
    m_harness->loginModel.setIsHiddenWechatLogin(true);
    m_login->login();
    QTRY_VERIFY(m_harness->loginModel.isLogin());
    QCOMPARE(m_harness->loginModel.userName(), u"student01"_s);
    QCOMPARE(m_harness->loginModel.password(), QString::fromLatin1(LoginHarness::password));
    QCOMPARE(m_harness->loginModel.school(), u"厦门实验小学"_s);
    QVERIFY(!m_harness->loginModel.isHiddenWechatLogin());
    QCOMPARE(m_login->account(), u""_s);
    QCOMPARE(m_login->password(), u""_s);
    QVERIFY(!m_harness->shell.progressHUD()->isVisible());
    QVERIFY(m_harness->toast().isNull());
}

void LoginViewController2Test::blanksGoToTheServer()
{
    start();
    fill(u"  "_s, u" "_s);
    m_login->login();
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    const auto requests = m_sandbox->takeRequests();
    const auto login = std::find_if(requests.begin(), requests.end(),
        [](const TracedRequest &request) { return request.value(u"start"_s) == u"login4H5"; });
    QVERIFY(login != requests.end());
    QCOMPARE(login->value(u"user_code"_s), u"  "_s);
}

void LoginViewController2Test::theAgreementIsUncheckedOnEveryAppearance()
{
    start();
    QVERIFY(!m_login->isUserInstructionsSelected());
    m_login->checkUserInstructions();
    QVERIFY(m_login->isUserInstructionsSelected());
    m_login->checkUserInstructions();
    QVERIFY(!m_login->isUserInstructionsSelected());
    m_login->checkUserInstructions();
    m_login->viewWillAppear();
    m_login->viewDidAppear();
    QVERIFY(!m_login->isUserInstructionsSelected());
}

void LoginViewController2Test::aMessageWaitsForTheLaunchAd()
{
    start();
    m_login->setMessage(u"登录已过期"_s);
    QCOMPARE(m_harness->toast(), u"登录已过期"_s);
    QVERIFY(m_login->message().isEmpty());
    m_harness->shell.toast()->hide();

    m_harness->launchAdShowing = true;
    m_login->setMessage(u"请重新登录"_s);
    QVERIFY(m_harness->toast().isNull());
    m_harness->notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
    QCOMPARE(m_harness->toast(), u"请重新登录"_s);
    m_harness->shell.toast()->hide();
    m_harness->notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
    QVERIFY2(m_harness->toast().isNull(), "a message is shown once");
}

void LoginViewController2Test::opensTheAgreements_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("envelope");
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("toast");

    const QString page = m_sandbox->address() + u"pages/agreement/"_s;
    QTest::newRow("user") << u"protocol"_s << QString() << page + u"user.html 用户协议"_s
                          << QString();
    QTest::newRow("privacy") << u"privacy"_s << QString() << page + u"privacy.html 隐私政策"_s
                             << QString();
    QTest::newRow("refused") << u"privacy"_s << u"{\"code\":500,\"msg\":\"维护中\"}"_s << QString()
                             << u"维护中"_s;
    QTest::newRow("no address") << u"privacy"_s << u"{\"code\":200,\"data\":[]}"_s << QString()
                                << u"页面地址无效，请稍后再试"_s;
}

void LoginViewController2Test::opensTheAgreements()
{
    QFETCH(const QString, link);
    QFETCH(const QString, envelope);
    if (!envelope.isNull())
        m_sandbox->addFault({{u"start"_s, u"agreement"_s}, {u"body"_s, envelope}});
    start();
    QStringList opened;
    connect(m_login.get(), &LoginViewController2::openOutLinkPage, this,
        [&](const QString &url, const QString &title) { opened << url + u' ' + title; });
    m_login->didSelectLink(u"nothing"_s);
    m_login->didSelectLink(link);
    m_login->didSelectLink(link);
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QTEST(opened.join(u' '), "opened");
    QTEST(m_harness->toast(), "toast");
    QCOMPARE(m_harness->askedFor().count(u"agreement"_s), 1);
}

void LoginViewController2Test::showsTheForgottenPasswordNotice()
{
    start();
    m_login->forgetPwd();
    AlertView *alert = m_harness->shell.alertView();
    QVERIFY(alert->isVisible() && alert->isFullScreen());
    QVERIFY(!alert->message().isEmpty());
    QVERIFY(alert->cancel());
    QVERIFY(!alert->isVisible());
}

QTEST_MAIN(LoginViewController2Test)
#include "LoginViewController2Test.moc"
