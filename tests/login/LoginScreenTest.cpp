#include "login/ScreenHarness.h"
#include "ui/FontChooser.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString chooseSchool = u"选择学校"_s;
const QString accountField = u"请输入账号/工号/学号"_s;
const QString passwordField = u"请输入密码"_s;
const QString agreement = u"登录即代表您已阅读同意《用户协议》和《隐私政策》"_s;
const QString searchField = u"请输入学校首字母或名称"_s;
const QString demoSchool = u"厦门实验小学"_s;
// Of those whose names begin with no letter, the first by its characters.
const QString firstSchool = u"（新）白云小学　分校"_s;

}

class LoginScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void namesEverything();
    void signsInByTouchAndKeys();
    void searchesAndJumpsInTheSchools();
    void anErrorKeepsTheFields();
    void theWechatRowGoesWithALocalSchool();
    void nothingIsClipped_data();
    void nothingIsClipped();

private:
    std::unique_ptr<SandboxProcess> m_sandbox;
};

void LoginScreenTest::initTestCase()
{
    QAccessible::setActive(true);
    FontChooser::apply();
    m_sandbox = std::make_unique<SandboxProcess>();
    QVERIFY(m_sandbox->isRunning());
}

void LoginScreenTest::namesEverything()
{
    ScreenHarness screen(*m_sandbox);
    screen.show();
    for (const QString &name :
        {u"成长平台"_s, chooseSchool, accountField, passwordField, agreement, u"《用户协议》"_s,
            u"《隐私政策》"_s, u"登录"_s, u"忘记密码"_s, u"第三方账号登录"_s, u"微信登录"_s})
        QVERIFY2(screen.named(name), qPrintable(name));
    screen.photograph(u"login"_s);
    screen.click(u"忘记密码"_s);
    QTRY_VERIFY(screen.named(u"关闭"_s));
    screen.photograph(u"forgotten"_s);
    screen.click(u"关闭"_s);
    QTRY_VERIFY(!screen.named(u"关闭"_s));
}

void LoginScreenTest::signsInByTouchAndKeys()
{
    ScreenHarness screen(*m_sandbox);
    screen.show();
    screen.click(u"登录"_s);
    QCOMPARE(screen.toast(), u"请选择学校"_s);

    screen.click(chooseSchool);
    screen.type(searchField, demoSchool);
    QTRY_VERIFY(screen.named(demoSchool) && !screen.named(firstSchool));
    screen.photograph(u"school-search"_s);
    screen.click(demoSchool, QAccessible::ListItem);
    QTRY_VERIFY(!screen.named(searchField));
    QCOMPARE(screen.controller.schoolText(), demoSchool);
    QTRY_VERIFY(screen.named(demoSchool));
    QTRY_COMPARE(screen.controller.logo().scheme(), u"data"_s);

    screen.type(accountField, u"student01"_s);
    QTest::keyClick(&screen.view, Qt::Key_Return);
    for (const QChar character : QString::fromLatin1(LoginHarness::password))
        QTest::keyClick(&screen.view, character.toLatin1());
    QCOMPARE(screen.controller.password(), QString::fromLatin1(LoginHarness::password));
    QVERIFY(!screen.named(passwordField)->property("displayText").toString().contains(u"vant"));
    QTest::keyClick(&screen.view, Qt::Key_Return);
    QCOMPARE(screen.toast(), u"请勾选已阅读同意《用户协议》和《隐私政策》"_s);

    screen.click(agreement, QAccessible::CheckBox);
    QVERIFY(screen.controller.isUserInstructionsSelected());
    screen.photograph(u"filled"_s);
    screen.click(u"登录"_s);
    QVERIFY(screen.shell.progressHUD()->isVisible());
    QTRY_VERIFY(screen.loginModel.isLogin());
    QCOMPARE(screen.named(accountField)->property("text").toString(), QString());
    QCOMPARE(screen.named(passwordField)->property("text").toString(), QString());
}

void LoginScreenTest::searchesAndJumpsInTheSchools()
{
    ScreenHarness screen(*m_sandbox);
    screen.show();
    screen.click(chooseSchool);
    QTRY_VERIFY(screen.named(firstSchool));
    QVERIFY2(screen.named(u"A"_s), "the side index");
    screen.photograph(u"schools"_s);
    screen.click(u"X"_s, QAccessible::Button);
    QTRY_VERIFY(!screen.named(firstSchool));
    screen.photograph(u"schools-x"_s);
    screen.type(searchField, u"没有这所"_s);
    QTRY_VERIFY(screen.named(u"没有找到相关学校"_s));
    screen.photograph(u"schools-none"_s);
    screen.click(u"清除"_s);
    QTRY_VERIFY(screen.named(firstSchool));
    screen.click(u"返回"_s);
    QTRY_VERIFY(!screen.named(searchField));
    QCOMPARE(screen.controller.schoolText(), chooseSchool);

    m_sandbox->addFault({{u"start"_s, u"cndSite"_s}, {u"times"_s, 1}, {u"body"_s, u""_s}});
    screen.click(chooseSchool);
    QTRY_VERIFY(screen.named(u"请求错误"_s));
    screen.photograph(u"schools-failed"_s);
    screen.click(u"重新加载"_s);
    QTRY_VERIFY(screen.named(firstSchool));
}

void LoginScreenTest::anErrorKeepsTheFields()
{
    ScreenHarness screen(*m_sandbox);
    screen.loginModel.setSchool(demoSchool);
    screen.loginModel.setSiteCode(QString::fromLatin1(LoginHarness::school));
    screen.show();
    screen.type(accountField, u"student01"_s);
    screen.type(passwordField, u"wrong"_s);
    screen.click(agreement, QAccessible::CheckBox);
    screen.click(u"登录"_s);
    QTRY_VERIFY(screen.manager.connectItems().empty());
    screen.mainQueue.advance(500ms);
    QCOMPARE(screen.toast(), u"账号或密码错误，请重新输入"_s);
    QCOMPARE(screen.named(accountField)->property("text").toString(), u"student01"_s);
    screen.photograph(u"refused"_s);
}

void LoginScreenTest::theWechatRowGoesWithALocalSchool()
{
    ScreenHarness screen(*m_sandbox);
    screen.loginModel.setIsHiddenWechatLogin(true);
    screen.show();
    QVERIFY(screen.named(u"登录"_s));
    QVERIFY(!screen.named(u"微信登录"_s));
    QVERIFY(!screen.named(u"第三方账号登录"_s));
}

void LoginScreenTest::nothingIsClipped_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("textScale");

    QTest::newRow("phone") << ScreenHarness::phone << 1.0;
    QTest::newRow("narrow") << QSize(320, 568) << 1.0;
    QTest::newRow("wide") << QSize(1280, 800) << 1.0;
    QTest::newRow("large-text") << ScreenHarness::phone << 1.5;
    QTest::newRow("narrow-large-text") << QSize(320, 568) << 1.5;
}

// Everything stands inside the window's width, no text is cut, and what does not fit its height is
// scrolled to.
void LoginScreenTest::nothingIsClipped()
{
    QFETCH(const QSize, size);
    QFETCH(const double, textScale);
    ScreenHarness screen(*m_sandbox, size, textScale);
    screen.loginModel.setSchool(u"长乐数智学校（本地部署）与名字很长很长的附属实验学校"_s);
    screen.show();
    screen.photograph(u"login-"_s + QString::fromLatin1(QTest::currentDataTag()));
    for (QQuickItem *item : screen.namedItems()) {
        const QRectF place = item->mapRectToScene(item->boundingRect());
        QVERIFY2(place.left() >= 0 && place.right() <= size.width(),
            qPrintable(ScreenHarness::nameOf(item)));
        QVERIFY2(!item->property("truncated").toBool(), qPrintable(ScreenHarness::nameOf(item)));
    }
    QQuickItem *last = screen.named(u"微信登录"_s);
    last->forceActiveFocus(Qt::TabFocusReason);
    const auto bottom = [&] { return last->mapRectToScene(last->boundingRect()).bottom(); };
    QTRY_VERIFY(bottom() <= size.height());
    screen.photograph(u"login-end-"_s + QString::fromLatin1(QTest::currentDataTag()));

    screen.named(screen.controller.schoolText())->forceActiveFocus(Qt::TabFocusReason);
    screen.click(screen.controller.schoolText());
    QTRY_VERIFY(screen.named(firstSchool));
    screen.photograph(u"schools-"_s + QString::fromLatin1(QTest::currentDataTag()));
}

QTEST_MAIN(LoginScreenTest)
#include "LoginScreenTest.moc"
