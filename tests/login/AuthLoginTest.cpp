#include "login/AuthLoginViewController.h"
#include "login/LoginHarness.h"
#include "login/LoginViewController2.h"
#include "platform/BrowserWXApi.h"
#include "platform/UrlOpener.h"
#include "ui/NavigationController.h"
#include "ui/UiHarness.h"

#include <QNetworkReply>
#include <QRegularExpression>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString appId = u"wx3f5a9c2e7b1d4068"_s;

class Browser : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &) const override { return true; }
    bool openURL(const QUrl &url) override
    {
        opened << url;
        return true;
    }

    QList<QUrl> opened;
};

}

//! Signing in with WeChat: from the button through the platform's authorisation page to the
//! binding screen.
class AuthLoginTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    Browser m_browser;
    std::unique_ptr<BrowserWXApi> m_wxApi;
    std::unique_ptr<LoginViewController2> m_login;
    std::unique_ptr<NavigationController> m_navigation;
    std::unique_ptr<UiHarness> m_ui;

    // What the link of the authorisation page leads to.
    QUrl answerOf(const QString &link)
    {
        QNetworkReply *reply = m_harness->network.get(QNetworkRequest(m_browser.opened.takeLast()));
        if (!QTest::qWaitFor([reply] { return reply->isFinished(); }, patienceMs))
            qWarning("the authorisation page did not come");
        const QString page = QString::fromUtf8(reply->readAll());
        reply->deleteLater();
        const QRegularExpression href(u"id=\"%1\" href=\"([^\"]*)\""_s.arg(link));
        return QUrl(href.match(page).captured(1).replace(u"&amp;"_s, u"&"_s));
    }

    void click(const QString &name)
    {
        TRY_VERIFY(m_ui->itemWithText(name));
        m_ui->click(m_ui->itemWithText(name));
    }

    AuthLoginViewController *binding() const
    {
        auto *frame = qobject_cast<NavigationController *>(
            m_harness->shell.navigator()->topViewController());
        return frame ? qobject_cast<AuthLoginViewController *>(frame->topViewController())
                     : nullptr;
    }

    void openBinding()
    {
        click(u"微信登录"_s);
        QCOMPARE(m_browser.opened.size(), 1);
        const QUrl answer = answerOf(u"btn-agree-new"_s);
        QVERIFY(m_wxApi->handleOpenURL(answer) && m_wxApi->handleOpenURL(answer));
        TRY_VERIFY(binding());
    }

private Q_SLOTS:
    void init()
    {
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        m_harness->loginModel.setSchool(u"厦门实验小学"_s);
        m_harness->loginModel.setSiteCode(u"school01"_s);
        m_browser.opened.clear();
        m_wxApi = std::make_unique<BrowserWXApi>(
            &m_browser, nullptr, m_sandbox.address() + u"wechat/authorise"_s);
        QVERIFY(m_wxApi->registerApp(appId, u"https://u.example/app/"_s));
        connect(m_wxApi.get(), &WXApi::onResp, this, [this](const SendAuthResp &response) {
            m_harness->notifications.postNotificationName(u"WechatAuthCode"_s,
                QVariantMap {{u"code"_s, response.code}, {u"state"_s, response.state}});
        });
        LoginEnvironment environment = m_harness->environment();
        environment.wxApi = m_wxApi.get();
        m_login = std::make_unique<LoginViewController2>(environment);
        Navigator *navigator = m_harness->shell.navigator();
        for (const QString &screen : {u"LoginScreen"_s, u"AuthLoginScreen"_s})
            navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
        navigator->setAnimated(false);
        m_navigation
            = std::make_unique<NavigationController>(navigator, u"LoginScreen"_s, m_login.get());
        m_ui = std::make_unique<UiHarness>();
        m_ui->showRootView(&m_harness->shell);
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
        m_login->checkUserInstructions();
    }

    void cleanup()
    {
        m_ui.reset();
        m_navigation.reset();
        m_login.reset();
    }

    void takesCallbacksOfItsOwnOnly_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("answer"); // null: not taken
        QTest::newRow("agreed") << appId + u"://oauth?code=a%26b&state=123"_s << u"a&b 123"_s;
        QTest::newRow("refused") << appId + u"://oauth?state=123"_s << u" 123"_s;
        QTest::newRow("nothing") << appId + u"://oauth"_s << u" "_s;
        QTest::newRow("another's") << u"wx1://oauth?code=a&state=123"_s << QString();
        QTest::newRow("another matter") << appId + u"://pay?code=a&state=123"_s << QString();
        QTest::newRow("link") << u"https://u.example/app/"_s + appId + u"/oauth?code=a&state=1"_s
                              << u"a 1"_s;
        QTest::newRow("foreign link")
            << u"https://u.example.cn/app/"_s + appId + u"/oauth?code=a&state=1"_s << QString();
    }

    void takesCallbacksOfItsOwnOnly()
    {
        QFETCH(const QString, url);
        QStringList answers;
        connect(m_wxApi.get(), &WXApi::onResp, this, [&](const SendAuthResp &response) {
            answers << response.code + u' ' + response.state;
        });
        const bool taken
            = m_wxApi->handleOpenURL(QUrl(url)) || m_wxApi->handleOpenUniversalLink(QUrl(url));
        QCOMPARE(taken, !answers.isEmpty());
        QTEST(answers.value(0), "answer");
    }

    void aRefusalIsToldEachTime()
    {
        for (int i = 0; i < 2; ++i) {
            click(u"微信登录"_s);
            m_wxApi->handleOpenURL(answerOf(u"btn-refuse"_s));
            QCOMPARE(m_harness->toast(), u"授权失败"_s);
            m_harness->mainQueue.advance(5s);
            QVERIFY(m_harness->toast().isNull());
        }
        BrowserWXApi unregistered(&m_browser, nullptr, m_sandbox.address());
        QVERIFY(!unregistered.registerApp({}, {}));
        QVERIFY(!unregistered.sendAuthReq(u"s"_s, u"1"_s) && m_browser.opened.isEmpty());
    }

    void theBindingScreenChecksInOrderAndTellsItsErrorLater()
    {
        openBinding();
        AuthLoginViewController *screen = binding();
        m_harness->calls();
        const auto says = [this](const QString &text) {
            click(u"登录"_s);
            return m_harness->toast() == text;
        };
        QVERIFY(says(u"请输入您的账号"_s));
        screen->setAccount(u"student02"_s);
        screen->setPassword(u"wrong"_s);
        QVERIFY(says(u"请勾选已阅读同意《用户协议》和《隐私政策》"_s));
        m_harness->mainQueue.advance(5s);
        screen->checkUserInstructions();
        const int waiting = m_harness->mainQueue.waiting();
        screen->login();
        TRY_COMPARE(m_harness->mainQueue.waiting(), waiting + 1);
        m_harness->mainQueue.advance(499ms);
        QVERIFY(m_harness->toast().isNull() && m_harness->shell.progressHUD()->isVisible());
        m_harness->mainQueue.advance(1ms);
        QCOMPARE(m_harness->toast(), u"账号或密码错误，请重新输入"_s);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible() && binding());
    }

    void oneLoginBindsAndSignsIn()
    {
        openBinding();
        AuthLoginViewController *screen = binding();
        screen->setAccount(u"student02"_s);
        screen->setPassword(u"vant1234"_s);
        screen->checkUserInstructions();
        m_harness->calls();
        screen->login();
        TRY_VERIFY(m_harness->loginModel.isLogin());
        TRY_VERIFY(!binding());
        const auto calls = m_harness->calls();
        QCOMPARE(calls.constFirst().value(u"bind_type"_s), u"WEIXIN"_s);
        QCOMPARE(calls.constFirst().value(u"login_type"_s), u"1"_s);
        QCOMPARE(calls.constFirst().value(u"nick"_s), u"夏天的风"_s);
        QCOMPARE(m_harness->loginModel.school(), u"厦门实验小学"_s);
        QCOMPARE(m_harness->loginModel.userName(), u"student02"_s);
        QVERIFY(!m_harness->shell.progressHUD()->isVisible());

        // From now on the platform knows the identity.
        m_harness->loginModel.setIsLogin(false);
        m_login->checkUserInstructions();
        m_login->wechatLogin();
        m_wxApi->handleOpenURL(answerOf(u"btn-agree-new"_s));
        TRY_VERIFY(m_harness->loginModel.isLogin());
        QVERIFY(!binding());
    }
};

QTEST_MAIN(AuthLoginTest)
#include "AuthLoginTest.moc"
