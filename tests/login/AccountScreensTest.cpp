#include "login/LoginHarness.h"
#include "login/LoginViewController.h"
#include "login/PActivateViewController.h"
#include "login/STSetingAccountViewController.h"
#include "ui/FontChooser.h"
#include "ui/NavigationController.h"
#include "ui/UiHarness.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Vant_LoginPlugin)

using namespace Qt::StringLiterals;

namespace {

const QString accountField = u"账号\\手机号码"_s;
const VerifiedAccount holder {u"7"_s, u"20240007"_s, 2, u"阿卜杜拉·买买提艾力·吐尔逊"_s};

}

//! The older login screen and the two steps of enabling an account, in a window.
class AccountScreensTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox {{u"--schools"_s, u"20"_s}};
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController> m_login;
    std::unique_ptr<NavigationController> m_navigation;
    std::unique_ptr<UiHarness> m_ui;

    void show(QSize size, double textScale, const QString &siteCode)
    {
        m_harness = std::make_unique<LoginHarness>(m_sandbox);
        m_harness->loginModel.setProvinces(u"内蒙古自治区"_s);
        m_harness->loginModel.setCity(u"锡林郭勒盟苏尼特左旗"_s);
        m_harness->loginModel.setSchool(siteCode.isEmpty() ? siteCode : u"长乐数智学校附属小学"_s);
        m_harness->loginModel.setSiteCode(siteCode);
        Navigator *navigator = m_harness->shell.navigator();
        for (const QString &screen :
            {u"RegionLoginScreen"_s, u"ActivateScreen"_s, u"SetingAccountScreen"_s})
            navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
        navigator->setAnimated(false);
        m_login = std::make_unique<LoginViewController>(m_harness->environment());
        m_navigation = std::make_unique<NavigationController>(
            navigator, m_login->screenName(), m_login.get());
        m_ui = std::make_unique<UiHarness>(size, textScale);
        m_ui->showRootView(&m_harness->shell);
        navigator->setRootViewController(
            QString::fromLatin1(NavigationController::screenName), m_navigation.get());
        TRY_VERIFY(m_ui->itemWithText(u"账号激活"_s));
    }

    QQuickItem *field(const QString &placeholder) const
    {
        for (QQuickItem *item : m_ui->items()) {
            if (item->property("placeholderText").toString() == placeholder)
                return item;
        }
        return nullptr;
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
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("textScale");
        QTest::addColumn<QString>("lowest");
        const QHash<QString, QString> screens {{u""_s, u"微信登录"_s},
            {u"ActivateScreen"_s, u"激活"_s}, {u"SetingAccountScreen"_s, u"确定"_s}};
        for (auto screen = screens.begin(); screen != screens.end(); ++screen) {
            const auto row = [&](const char *name) -> QTestData & {
                return QTest::addRow("%s %s", qPrintable(screen.key()), name) << screen.key();
            };
            row("phone, large text") << QSize(390, 844) << 1.5 << *screen;
            row("narrow, large text") << QSize(320, 568) << 1.5 << *screen;
            row("wide") << QSize(1280, 800) << 1.0 << *screen;
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
        show(size, textScale, u"school01"_s);
        if (screen == u"ActivateScreen")
            m_navigation->push(screen, new PActivateViewController(m_harness->environment()));
        else if (!screen.isEmpty())
            m_navigation->push(
                screen, new STSetingAccountViewController(m_harness->environment(), holder));
        TRY_VERIFY(m_ui->itemWithText(lowest));
        for (QQuickItem *item : m_ui->items()) {
            const QString text = UiHarness::textOf(item);
            const QRectF place = item->mapRectToScene(item->boundingRect());
            QVERIFY2(text.isEmpty() || (place.left() >= 0 && place.right() <= size.width()),
                qPrintable(text));
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(text));
        }
        QQuickItem *last = m_ui->itemWithText(lowest);
        last->setEnabled(true);
        last->forceActiveFocus(Qt::TabFocusReason);
        TRY_VERIFY(last->mapRectToScene(last->boundingRect()).bottom() <= size.height());
    }

    void nothingIsWrittenBeforeASchoolIsChosen()
    {
        show({390, 844}, 1, {});
        m_ui->click(field(accountField));
        QCOMPARE(m_harness->toast(), u"请先选择学校"_s);
        QTest::keyClick(&m_ui->view, Qt::Key_A);
        QVERIFY(m_login->account().isEmpty());
        QVERIFY(!m_ui->itemWithText(u"登录"_s)->isEnabled());
        m_harness->mainQueue.advance(std::chrono::seconds(5));
        QTest::keyClick(&m_ui->view, Qt::Key_Tab);
        QVERIFY(field(u"请输入密码"_s)->hasActiveFocus());
        QCOMPARE(m_harness->toast(), u"请先选择学校"_s);
    }

    void theButtonFollowsTheFields()
    {
        show({390, 844}, 1, u"school01"_s);
        QQuickItem *button = m_ui->itemWithText(u"登录"_s);
        m_ui->click(field(accountField));
        QTest::keyClick(&m_ui->view, Qt::Key_A);
        QVERIFY(m_login->account() == u"a" && !button->isEnabled());
        QTest::keyClick(&m_ui->view, Qt::Key_Return);
        QTest::keyClick(&m_ui->view, Qt::Key_B);
        QVERIFY(m_login->password() == u"b" && button->isEnabled());
    }
};

QTEST_MAIN(AccountScreensTest)
#include "AccountScreensTest.moc"
