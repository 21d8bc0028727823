#include "e2e/steps/Steps.h"

#include "e2e/steps/Account.h"
#include "e2e/steps/BridgePage.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"
#include "e2e/steps/WeChatPage.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTabs = 20;
const QString missedPage = QStringLiteral("/portal/plain.html?from=missed");
const QString missedQuestion = QStringLiteral("你收到一条消息，是否点击查看？");
const QString expired = QStringLiteral("登录已过期，请重新登录");

void seeSignedOut(Driver &driver)
{
    SignIn::seeLoginScreen(driver, Account::school);
    for (const QString &field : {Texts::accountField, Texts::passwordField}) {
        driver.check(driver.see(field, QAccessible::EditableText).value.isEmpty(),
            u"the field %1 is empty"_s.arg(field));
    }
    driver.check(!driver.see(Texts::agreementBox, QAccessible::CheckBox).checked,
        u"the agreement is to be accepted anew"_s);
}

void pressOnBridgePage(Driver &driver, const QString &handler)
{
    if (!driver.page().path().startsWith(BridgePage::path))
        BridgePage::open(driver);
    BridgePage::press(driver, handler);
    seeSignedOut(driver);
}

void checkOldSessionIsGone(Driver &driver)
{
    const auto calls = driver.wire().requests(isCall(u"login4H5"_s));
    driver.check(
        calls.size() == 1 && !hasCookie(calls[0], u"mo"_s) && !hasCookie(calls[0], u"tmo"_s),
        u"one sign-in was sent, without the session that was left"_s);
}

// A session of its own, carried by the first request as at the first sign-in.
void seeNewPortal(Driver &driver)
{
    SignIn::seePortal(driver);
    const auto pages = driver.wire().requests(isPath(u"/portal/index.html"_s));
    driver.check(!pages.isEmpty() && hasCookie(pages[0], u"mo"_s) && hasCookie(pages[0], u"tmo"_s)
            && hasCookie(pages[0], u"rblgin"_s),
        u"the portal's first request carries the new session and the marker"_s);
}

// The identity has an account already.
void signInByWeChat(Driver &driver)
{
    driver.wire().mark();
    SignIn::acceptAgreement(driver);
    const QUrl page = driver.seeOpened([&] { driver.tap(u"微信登录"_s, QAccessible::Button); });
    WeChatPage::press(driver, page, WeChatPage::agree);
    seeNewPortal(driver);
    driver.check(driver.wire().requests(isCall(u"login4AppWeixin"_s)).size() == 1
            && driver.wire().requests(isCall(u"login4H5"_s)).isEmpty(),
        u"one sign-in was sent, with WeChat's code"_s);
}

void signInByMouse(Driver &driver)
{
    driver.wire().mark();
    driver.click(Texts::accountField, QAccessible::EditableText);
    driver.hand().type(Account::userCode);
    driver.click(Texts::passwordField, QAccessible::EditableText);
    driver.hand().type(Account::password);
    driver.click(Texts::agreementBox, QAccessible::CheckBox);
    driver.click(Texts::loginButton, QAccessible::Button);
    seeNewPortal(driver);
    checkOldSessionIsGone(driver);
}

void tabTo(Driver &driver, const QString &name, QAccessible::Role role)
{
    const auto isFocused = [&] {
        const auto thing = driver.screen().find(name, role);
        return thing && thing->focused;
    };
    for (int i = 0; i < mostTabs && !isFocused(); ++i)
        driver.hand().press(Qt::Key_Tab);
    driver.check(isFocused(), u"the tab key reaches \"%1\""_s.arg(name));
}

void signInByKeyboard(Driver &driver)
{
    driver.wire().mark();
    tabTo(driver, Texts::accountField, QAccessible::EditableText);
    driver.hand().type(Account::userCode);
    tabTo(driver, Texts::passwordField, QAccessible::EditableText);
    driver.hand().type(Account::password);
    tabTo(driver, Texts::agreementBox, QAccessible::CheckBox);
    driver.hand().press(Qt::Key_Space);
    tabTo(driver, Texts::loginButton, QAccessible::Button);
    driver.photograph();
    driver.hand().press(Qt::Key_Return);
    seeNewPortal(driver);
    checkOldSessionIsGone(driver);
}

void quit(Driver &driver)
{
    driver.photograph();
    driver.window()->close();
    driver.waitFor(u"the window to close"_s, [&] { return !driver.window()->isVisible(); });
}

void startAgain(Driver &driver)
{
    bool loginShown = false;
    driver.waitFor(u"the portal"_s, [&] {
        loginShown |= driver.screen().shows(Texts::loginButton, QAccessible::Button);
        return driver.page().path().startsWith(u"/portal/index.html"_s);
    });
    driver.check(!loginShown, u"the login screen stays away"_s);
    seeNewPortal(driver);
    const auto calls = driver.wire().requests(isCall(u"login4H5"_s));
    driver.check(calls.size() == 1 && calls[0].value(u"login_type"_s) == u"3"
            && !calls[0].value(u"login_token"_s).isEmpty(),
        u"one sign-in by the stored token came before"_s);
    driver.note(u"signed in by the stored token, no login screen"_s);
}

// It was sent while the client did not run.
void pushWhileOff(Wire &wire)
{
    wire.push(missedPage);
}

void missedPush(Driver &driver)
{
    driver.see(missedQuestion);
    driver.photograph();
    driver.tap(u"确定"_s, QAccessible::Button);
    driver.seePage(missedPage, u"#address"_s);
    driver.seeNothingOf(missedQuestion);
}

void refuseToken(Wire &wire)
{
    wire.spoil({{u"start"_s, u"login4H5"_s},
        {u"body"_s, QJsonObject {{u"code"_s, 401}, {u"msg"_s, expired}}}});
}

void startWithExpiredToken(Driver &driver)
{
    driver.seeToast(expired, [] {});
    SignIn::seeLoginScreen(driver, Account::school);
}

}

QList<Step> sessionSteps()
{
    const QString signedOut = u"bridge-jump2LoginPage"_s;
    const QString byWeChat = u"sign-in-by-wechat"_s;
    const QString signedOutOfWeChat = u"sign-out-once-more"_s;
    const QString byMouse = u"sign-in-by-mouse"_s;
    const QString signedOutAgain = u"bridge-logout"_s;
    const QString byKeyboard = u"sign-in-by-keyboard"_s;
    const QString ended = u"quit"_s;
    const QString again = u"start-again"_s;
    return {
        {signedOut, {u"sign-in"_s}, Lives::signIn,
            [](Driver &driver) { pressOnBridgePage(driver, u"jump2LoginPage"_s); }},
        {byWeChat, {signedOut}, Lives::signIn, signInByWeChat},
        {signedOutOfWeChat, {byWeChat}, Lives::signIn,
            [](Driver &driver) { pressOnBridgePage(driver, u"jump2LoginPage"_s); }},
        {byMouse, {signedOutOfWeChat}, Lives::signIn, signInByMouse},
        {signedOutAgain, {byMouse}, Lives::signIn,
            [](Driver &driver) { pressOnBridgePage(driver, u"logout"_s); }},
        {byKeyboard, {signedOutAgain}, Lives::signIn, signInByKeyboard},
        {ended, {byKeyboard}, Lives::signIn, quit},
        {again, {ended}, Lives::comeBack, startAgain, pushWhileOff},
        {u"missed-push"_s, {again}, Lives::comeBack, missedPush},
        {u"expired-token"_s, {again}, Lives::expiry, startWithExpiredToken, refuseToken},
    };
}
