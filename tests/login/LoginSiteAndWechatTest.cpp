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

class LoginSiteAndWechatTest : public LoginControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void takesOverTheChosenSchool_data();
    void takesOverTheChosenSchool();
    void showsTheSchoolsLogo_data();
    void showsTheSchoolsLogo();
    void addressesOfLogos_data();
    void addressesOfLogos();
    void wechatNeedsSchoolAndAgreement();
    void handlesWechatAnswers_data();
    void handlesWechatAnswers();
};

void LoginSiteAndWechatTest::takesOverTheChosenSchool_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("siteCode");
    QTest::addColumn<bool>("isLocal");

    QTest::newRow("local") << QString::fromUtf8(LoginHarness::localSchool) << u"local01"_s << true;
    QTest::newRow("ordinary") << u"沈阳新苑中学"_s << u"school03"_s << false;
}

void LoginSiteAndWechatTest::takesOverTheChosenSchool()
{
    QFETCH(const QString, name);
    QFETCH(const QString, siteCode);
    QFETCH(const bool, isLocal);
    start();
    m_harness->loginModel.setIsLocal(!isLocal);
    m_harness->loginModel.setLocalUrl(u"http://old"_s);
    m_login->chooseSchool();
    m_login->chooseSchool();
    ChooseSchoolViewController *chooser = this->chooser();
    QVERIFY(chooser);
    chooser->textDidChange(name);
    QTRY_COMPARE(chooser->schools()->rowCount(), 1);
    const QString siteId = chooser->schools()->schoolAt(0)->site_id;
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    m_harness->askedFor();
    chooser->didSelectRow(0);

    QCOMPARE(m_login->schoolText(), name);
    QVERIFY(m_login->isSchoolChosen());
    QCOMPARE(m_login->siteCode(), siteCode);
    QCOMPARE(m_harness->requests.getCurrentOrganization(), siteCode);
    QCOMPARE(m_harness->loginModel.isLocal(), isLocal);
    QCOMPARE(m_harness->loginModel.localUrl().startsWith(u"http"), isLocal);
    QCOMPARE(m_harness->loginModel.localUrlQe().startsWith(u"http"), isLocal);
    QCOMPARE(m_login->isWechatLoginHidden(), isLocal);
    QVERIFY2(m_harness->loginModel.siteCode() == u"school01", "kept by a login alone");
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    const auto requests = m_sandbox->takeRequests();
    QVERIFY(!requests.isEmpty());
    QCOMPARE(requests.first().value(u"start"_s), u"getSetting4App"_s);
    QCOMPARE(requests.first().value(u"site_id"_s), siteId);
}

void LoginSiteAndWechatTest::showsTheSchoolsLogo_data()
{
    QTest::addColumn<QString>("logo");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("shown");

    QTest::newRow("a picture") << u"images/school-1.png"_s << QString() << true;
    QTest::newRow("no picture") << u"images/school-1.png"_s << u"<html>"_s << false;
    QTest::newRow("missing") << u"images/nowhere.png"_s << QString() << false;
}

void LoginSiteAndWechatTest::showsTheSchoolsLogo()
{
    QFETCH(const QString, logo);
    QFETCH(const QString, fault);
    QFETCH(const bool, shown);
    m_sandbox->setAnswer({{u"start"_s, u"getSetting4App"_s},
        {u"data"_s,
            QJsonObject {{u"h5_logo"_s, m_sandbox->address(SandboxProcess::Content) + logo}}}});
    if (!fault.isNull())
        m_sandbox->addFault({{u"path"_s, u"/"_s + logo}, {u"body"_s, fault}});
    QSignalSpy finished(&m_harness->network, &QNetworkAccessManager::finished);
    start();
    QCOMPARE(m_login->logo().toString(), u"qrc:/assets/logo.png"_s);
    QTRY_COMPARE(finished.size(), 2);
    if (shown)
        QTRY_VERIFY(m_login->logo().toString().startsWith(u"data:image/png;base64,"));
    QCoreApplication::processEvents();
    QCOMPARE(m_login->logo().scheme(), shown ? u"data"_s : u"qrc"_s);
}

void LoginSiteAndWechatTest::addressesOfLogos_data()
{
    QTest::addColumn<QString>("h5_logo");
    QTest::addColumn<QString>("address");

    QTest::newRow("https") << u"https://a/b"_s << u"https://a/b"_s;
    QTest::newRow("http") << u"http://a/b"_s << u"http://a/b"_s;
    QTest::newRow("without a scheme") << u"//a/b"_s << u"https://a/b"_s;
    QTest::newRow("none") << QString() << QString();
}

void LoginSiteAndWechatTest::addressesOfLogos()
{
    QFETCH(const QString, h5_logo);
    QTEST(SchoolLogo::address(h5_logo), "address");
}

void LoginSiteAndWechatTest::wechatNeedsSchoolAndAgreement()
{
    m_login = std::make_unique<LoginViewController2>(m_harness->environment());
    m_login->viewDidLoad();
    m_login->wechatLogin();
    QCOMPARE(m_harness->toast(), u"请先选择学校"_s);
    // A code without a name: the row still reads "choose".
    m_harness->loginModel.setSiteCode(u"school01"_s);
    m_login = std::make_unique<LoginViewController2>(m_harness->environment());
    m_login->viewDidLoad();
    m_harness->shell.toast()->hide();
    m_login->wechatLogin();
    QCOMPARE(m_harness->toast(), u"请先选择学校"_s);

    start();
    m_login->wechatLogin();
    QCOMPARE(m_harness->toast(), notAgreed);
    QVERIFY(m_harness->wxApi.asked.isEmpty());

    m_harness->shell.toast()->hide();
    m_harness->requests.setOrganization(u"another"_s);
    m_login->checkUserInstructions();
    m_login->wechatLogin();
    QVERIFY(m_harness->toast().isNull());
    QCOMPARE(m_harness->wxApi.asked, QStringList {u"snsapi_userinfo 123"_s});
    QCOMPARE(m_harness->requests.getCurrentOrganization(), u"school01"_s);

    m_harness->wxApi.available = false;
    m_login->wechatLogin();
    QCOMPARE(m_harness->toast(), u"微信登录暂不可用"_s);
}

void LoginSiteAndWechatTest::handlesWechatAnswers_data()
{
    QTest::addColumn<QVariantMap>("answer");
    QTest::addColumn<QString>("envelope");
    QTest::addColumn<QString>("toast");
    QTest::addColumn<QString>("jumped");
    QTest::addColumn<bool>("signedIn");

    const auto answer = [](const QString &code, const QString &state) {
        return QVariantMap {{u"code"_s, code}, {u"state"_s, state}};
    };
    QTest::newRow("bound") << answer(u"c"_s, u"123"_s) << u"{\"code\":200,\"data\":{\"user\":{}}}"_s
                           << QString() << QString() << true;
    QTest::newRow("unbound") << answer(u"c"_s, u"123"_s)
                             << u"{\"code\":8888,\"data\":{\"nick\":\"小林\"}}"_s << QString()
                             << u"小林 厦门实验小学"_s << false;
    QTest::newRow("refused by the platform")
        << answer(u"c"_s, u"123"_s) << u"{\"code\":1,\"msg\":\"授权码已失效\"}"_s
        << u"授权码已失效"_s << QString() << false;
    QTest::newRow("cancelled") << answer({}, u"123"_s) << QString() << u"授权失败"_s << QString()
                               << false;
    QTest::newRow("a foreign state")
        << answer(u"c"_s, u"1234"_s) << QString() << u"授权失败"_s << QString() << false;
    QTest::newRow("a page's answer")
        << answer(u"c"_s, u"8888"_s) << QString() << QString() << QString() << false;
}

void LoginSiteAndWechatTest::handlesWechatAnswers()
{
    QFETCH(const QVariantMap, answer);
    QFETCH(const QString, envelope);
    QFETCH(const bool, signedIn);
    start();
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    if (!envelope.isNull())
        m_sandbox->addFault({{u"start"_s, u"login4AppWeixin"_s}, {u"body"_s, envelope}});
    QString jumped;
    connect(m_login.get(), &LoginViewController2::jumpToAuthVC, this,
        [&](const QJsonObject &params, const QString &school) {
            jumped = params[u"nick"].toString() + u' ' + school;
        });
    m_harness->askedFor();
    m_harness->notifications.postNotificationName(u"WechatAuthCode"_s, answer);
    QTRY_VERIFY(m_harness->manager.connectItems().empty());
    QTEST(m_harness->toast(), "toast");
    QTEST(jumped, "jumped");
    QCOMPARE(m_harness->loginModel.isLogin(), signedIn);
    QCOMPARE(m_harness->askedFor().count(u"login4AppWeixin"_s), envelope.isNull() ? 0 : 1);
}

QTEST_MAIN(LoginSiteAndWechatTest)
#include "LoginSiteAndWechatTest.moc"
