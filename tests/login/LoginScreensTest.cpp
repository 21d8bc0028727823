#include "login/LoginHarness.h"
#include "login/enabling/PActivateViewController.h"
#include "login/enabling/STSetingAccountViewController.h"
#include "login/region/LoginViewController.h"
#include "login/school/LoginViewController2.h"
#include "ui/UiHarness.h"
#include "ui/navigation/NavigationController.h"
#include "ui/theme/FontChooser.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;

namespace {

const QString unencrypted = u"该学校的连接未加密，密码可能被他人看到"_s;
const QString longName = u"长乐数智学校（本地部署）与名字很长很长的附属实验学校"_s;
const VerifiedAccount holder {u"7"_s, u"20240007"_s, 2, u"阿卜杜拉·买买提艾力·吐尔逊"_s};

}

//! Both login screens and the two steps of enabling an account, in a window.
class LoginScreensTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController> m_login;
    std::unique_ptr<LoginViewController2> m_current;
    std::unique_ptr<NavigationController> m_navigation;
    std::unique_ptr<UiHarness> m_ui;

    void show(const QString &screen, QSize size, double textScale)
    {
        LoginModel &model = m_harness->loginModel;
        model.setProvinces(u"内蒙古自治区"_s);
        model.setCity(u"锡林郭勒盟苏尼特左旗"_s);
        model.setSchool(longName);
        model.setSiteCode(u"school01"_s);
        model.setIsLocal(true);
        model.setLocalUrl(u"http://10.1.2.3/rb"_s);
        Navigator *navigator = m_harness->shell.navigator();
        for (const char *name :
            {"LoginScreen", "RegionLoginScreen", "ActivateScreen", "SetingAccountScreen"})
            navigator->registerScreen(QString::fromLatin1(name),
                QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(QLatin1StringView(name))));
        navigator->setAnimated(false);
        const LoginEnvironment environment = m_harness->environment();
        ViewController *first = nullptr;
        if (screen == u"LoginScreen")
            first = (m_current = std::make_unique<LoginViewController2>(environment)).get();
        else
            first = (m_login = std::make_unique<LoginViewController>(environment)).get();
        m_navigation = std::make_unique<NavigationController>(
            navigator, m_login ? m_login->screenName() : screen, first);
        m_ui = std::make_unique<UiHarness>(size, textScale);
        m_ui->showRootView(&m_harness->shell);
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
        if (screen == u"ActivateScreen")
            m_navigation->push(screen, new PActivateViewController(environment));
        else if (screen == u"SetingAccountScreen")
            m_navigation->push(screen, new STSetingAccountViewController(environment, holder));
    }

private Q_SLOTS:
    void initTestCase() { FontChooser::apply(); }

    void init() { m_harness = std::make_unique<LoginHarness>(m_sandbox); }

    void cleanup()
    {
        m_ui.reset();
        m_navigation.reset();
        m_login.reset();
        m_current.reset();
    }

    void nothingIsClipped_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("textScale");
        QTest::addColumn<QString>("lowest");
        const std::pair<const char *, QString> screens[] {{"LoginScreen", u"微信登录"_s},
            {"RegionLoginScreen", u"微信登录"_s}, {"ActivateScreen", u"激活"_s},
            {"SetingAccountScreen", u"确定"_s}};
        for (const auto &[screen, lowest] : screens) {
            const auto row = [screen = screen](const char *name) -> QTestData & {
                return QTest::addRow("%s %s", screen, name) << QString::fromLatin1(screen);
            };
            row("phone, large text") << QSize(390, 844) << 1.5 << lowest;
            row("narrow, large text") << QSize(320, 568) << 1.5 << lowest;
            row("wide") << QSize(1280, 800) << 1.0 << lowest;
        }
    }

    // Everything stands inside the window's width, no text is cut, and what does not fit its
    // height is scrolled to.
    void nothingIsClipped()
    {
        QFETCH(const QString, screen);
        QFETCH(const QSize, size);
        QFETCH(const double, textScale);
        QFETCH(const QString, lowest);
        show(screen, size, textScale);
        TRY_VERIFY(m_ui->itemWithText(lowest));
        for (QQuickItem *item : m_ui->items()) {
            const QString text = UiHarness::textOf(item);
            const QRectF place = item->mapRectToScene(item->boundingRect());
            QVERIFY2(text.isEmpty() || (place.left() >= 0 && place.right() <= size.width()),
                qPrintable(text));
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(text));
        }
        QCOMPARE(m_ui->itemWithText(unencrypted) != nullptr, screen.endsWith(u"LoginScreen"));
        QQuickItem *last = m_ui->itemWithText(lowest);
        last->setEnabled(true);
        last->forceActiveFocus(Qt::TabFocusReason);
        TRY_VERIFY(last->mapRectToScene(last->boundingRect()).bottom() <= size.height());
    }

    void enterSignsInWhereTheButtonWould()
    {
        show(u"RegionLoginScreen"_s, {390, 844}, 1);
        TRY_VERIFY(m_ui->itemWithText(u"登录"_s));
        m_login->setAccount(u"student01"_s);
        QQuickItem *password = m_ui->itemWithText(u"请输入密码"_s);
        QVERIFY(password);
        password->forceActiveFocus();
        QVERIFY(!m_ui->itemWithText(u"登录"_s)->isEnabled());
        QTest::keyClick(&m_ui->view, Qt::Key_Return);
        QVERIFY(m_harness->toast().isNull());
        m_login->setPassword(u"vant1234"_s);
        QVERIFY(m_ui->itemWithText(u"登录"_s)->isEnabled());
        QTest::keyClick(&m_ui->view, Qt::Key_Return);
        QCOMPARE(m_harness->toast(), u"请勾选已阅读同意《用户协议》和《隐私政策》"_s);
    }

    void saysWhereThePasswordWouldGoUnencrypted_data()
    {
        QTest::addColumn<QString>("localUrl"); // null: the platform's own server, here on loopback
        QTest::addColumn<QString>("siteCode");
        QTest::addColumn<bool>("isOpen");
        QTest::newRow("the platform's") << QString() << u"school01"_s << false;
        QTest::newRow("open") << u"http://10.1.2.3:81/rb"_s << u"local01"_s << true;
        QTest::newRow("encrypted") << u"https://10.1.2.3/rb"_s << u"local01"_s << false;
        QTest::newRow("this device") << u"http://localhost:8080/rb"_s << u"local01"_s << false;
        QTest::newRow("this device, v6") << u"http://[::1]/rb"_s << u"local01"_s << false;
        QTest::newRow("no school") << u"http://10.1.2.3/rb"_s << QString() << false;
    }

    void saysWhereThePasswordWouldGoUnencrypted()
    {
        QFETCH(const QString, localUrl);
        QFETCH(const QString, siteCode);
        QFETCH(const bool, isOpen);
        m_harness->loginModel.setIsLocal(!localUrl.isNull());
        m_harness->loginModel.setLocalUrl(localUrl);
        m_harness->loginModel.setSiteCode(siteCode);
        if (isOpen)
            QTest::ignoreMessage(QtWarningMsg, "passwords go unencrypted to \"10.1.2.3\"");
        LoginEnvironment environment = m_harness->environment();
        LoginViewController2 login(environment);
        login.viewDidLoad();
        QCOMPARE(login.connectionWarning(), isOpen ? unencrypted : QString());
        QVERIFY(m_harness->callsEnd());
    }
};

QTEST_MAIN(LoginScreensTest)
#include "LoginScreensTest.moc"
