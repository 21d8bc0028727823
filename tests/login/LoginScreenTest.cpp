#include "login/LoginHarness.h"
#include "login/LoginViewController2.h"
#include "ui/FontChooser.h"
#include "ui/NavigationController.h"
#include "ui/UiHarness.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;

namespace {

// Of those whose names begin with no letter, the first by its characters.
const QString firstSchool = u"（新）白云小学　分校"_s;
const QString longName = u"长乐数智学校（本地部署）与名字很长很长的附属实验学校"_s;

}

//! The login flow in a window, where the tour through the whole application does not look.
class LoginScreenTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController2> m_login;
    std::unique_ptr<NavigationController> m_navigation;
    std::unique_ptr<UiHarness> m_ui;

    void show(QSize size, double textScale, bool wechatHidden)
    {
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        m_harness->loginModel.setSchool(longName);
        m_harness->loginModel.setIsHiddenWechatLogin(wechatHidden);
        Navigator *navigator = m_harness->shell.navigator();
        for (const QString &screen : {u"LoginScreen"_s, u"ChooseSchoolScreen"_s})
            navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
        navigator->setAnimated(false);
        m_login = std::make_unique<LoginViewController2>(m_harness->environment());
        m_navigation
            = std::make_unique<NavigationController>(navigator, u"LoginScreen"_s, m_login.get());
        m_ui = std::make_unique<UiHarness>(size, textScale);
        m_ui->showRootView(&m_harness->shell);
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
    }

    void click(const QString &name)
    {
        TRY_VERIFY(m_ui->itemWithText(name));
        m_ui->click(m_ui->itemWithText(name));
    }

private Q_SLOTS:
    void initTestCase() { FontChooser::apply(); }

    void cleanup()
    {
        m_ui.reset();
        m_navigation.reset();
        m_login.reset();
    }

    void nothingIsClipped_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("textScale");
        QTest::newRow("phone, large text") << QSize(390, 844) << 1.5;
        QTest::newRow("narrow, large text") << QSize(320, 568) << 1.5;
        QTest::newRow("wide") << QSize(1280, 800) << 1.0;
    }

    // Everything stands inside the window's width, no text is cut, and what does not fit its
    // height is scrolled to.
    void nothingIsClipped()
    {
        QFETCH(const QSize, size);
        QFETCH(const double, textScale);
        show(size, textScale, false);
        for (QQuickItem *item : m_ui->items()) {
            const QString text = UiHarness::textOf(item);
            const QRectF place = item->mapRectToScene(item->boundingRect());
            QVERIFY2(text.isEmpty() || (place.left() >= 0 && place.right() <= size.width()),
                qPrintable(text));
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(text));
        }
        QQuickItem *last = m_ui->itemWithText(u"微信登录"_s);
        last->forceActiveFocus(Qt::TabFocusReason);
        TRY_VERIFY(last->mapRectToScene(last->boundingRect()).bottom() <= size.height());
    }

    void aLocalSchoolHasNoWechatRowAndTheListItsIndexAndAnotherTry()
    {
        show({390, 844}, 1, true);
        QVERIFY(m_ui->itemWithText(u"登录"_s) && !m_ui->itemWithText(u"微信登录"_s));
        m_sandbox.addFault({{u"start"_s, u"cndSite"_s}, {u"times"_s, 1}, {u"body"_s, u""_s}});
        click(longName);
        TRY_VERIFY(m_ui->itemWithText(u"请求错误"_s));
        click(u"重新加载"_s);
        TRY_VERIFY(m_ui->itemWithText(firstSchool));
        click(u"X"_s);
        TRY_VERIFY(!m_ui->itemWithText(firstSchool));
    }
};

QTEST_MAIN(LoginScreenTest)
#include "LoginScreenTest.moc"
