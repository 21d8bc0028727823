#include "e2e/steps/Steps.h"

#include "e2e/steps/Account.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"
#include "e2e/steps/WeChatPage.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr int leastRowHeight = 44;
constexpr int slowAnswerMs = 2'000;
const QString wrongPassword = QStringLiteral("vant0000");

void loginScreen(Driver &driver)
{
    SignIn::seeLoginScreen(driver, Texts::chooseSchool);
    driver.seeAll({u"成长平台"_s, u"忘记密码"_s, u"第三方账号登录"_s, Texts::agreementBox});
    driver.check(!driver.screen().find(Texts::agreementBox, QAccessible::CheckBox)->checked,
        u"the agreement is not accepted beforehand"_s);
    driver.note(driver.screen().description());
}

void forgottenPassword(Driver &driver)
{
    driver.tap(u"忘记密码"_s);
    driver.see(Texts::close, QAccessible::Button);
    driver.photograph();
    driver.note(driver.screen().description());
    driver.tap(Texts::close, QAccessible::Button);
    driver.seeNothingOf(Texts::close, QAccessible::Button);
}

void nothingChosen(Driver &driver)
{
    driver.seeToast(u"请选择学校"_s, [&] { driver.tap(Texts::loginButton, QAccessible::Button); });
}

// The rows as wide as the window.
QStringList schoolsShown(Driver &driver)
{
    QStringList names;
    for (const Screen::Thing &thing : driver.screen().things()) {
        if (thing.place.width() == driver.window()->width()
            && thing.place.height() > leastRowHeight)
            names << thing.name;
    }
    return names;
}

void schoolList(Driver &driver)
{
    driver.wire().mark();
    driver.tap(Texts::chooseSchool);
    driver.see(Texts::searchField, QAccessible::EditableText);
    driver.see(Texts::chooseSchool, QAccessible::Heading);
    driver.waitFor(u"the list of schools to be asked for"_s,
        [&] { return !driver.wire().requests(isCall(u"cndSite"_s)).isEmpty(); });
    // Names without a letter at their start stand before A.
    driver.see(u"#"_s, QAccessible::Heading);
    driver.waitFor(u"schools"_s, [&] { return !schoolsShown(driver).isEmpty(); });
    driver.note(schoolsShown(driver).join(u" | "));
}

void schoolByLetter(Driver &driver)
{
    driver.enter(Texts::searchField, u"w"_s);
    driver.see(u"W"_s, QAccessible::Heading);
    driver.seeNothingOf(u"#"_s, QAccessible::Heading);
    driver.note(schoolsShown(driver).join(u" | "));
}

void schoolByName(Driver &driver)
{
    driver.enter(Texts::searchField, Account::school);
    driver.see(Account::school);
    driver.waitFor(u"the other schools to go"_s, [&] {
        const QStringList shown = schoolsShown(driver);
        return !shown.isEmpty() && shown.filter(Account::school) == shown;
    });
    driver.note(schoolsShown(driver).join(u" | "));
}

void schoolChosen(Driver &driver)
{
    driver.wire().mark();
    driver.tap(Account::school);
    SignIn::seeLoginScreen(driver, Account::school);
    driver.waitFor(u"the school's logo to be asked for"_s,
        [&] { return !driver.wire().requests(isCall(u"getSetting4App"_s)).isEmpty(); });
    const TracedRequest logo = driver.wire().requests(isCall(u"getSetting4App"_s)).constFirst();
    driver.check(logo.value(u"site_id"_s) == Account::siteId,
        u"the logo of site %1 was asked for"_s.arg(logo.value(u"site_id"_s)));
    driver.waitFor(u"the logo itself to be loaded"_s, [&] {
        return !driver.wire()
                    .requests([](const TracedRequest &request) {
                        return request.path.startsWith(u"/images/school-");
                    })
                    .isEmpty();
    });
}

void agreementUnchecked(Driver &driver)
{
    driver.enter(Texts::accountField, Account::userCode);
    driver.enter(Texts::passwordField, wrongPassword);
    driver.wire().mark();
    driver.seeToast(
        Texts::acceptFirst, [&] { driver.tap(Texts::loginButton, QAccessible::Button); });
    driver.check(driver.wire().requests(isCall(u"login4H5"_s)).isEmpty(),
        u"nothing is sent before the agreement is accepted"_s);
}

QUrl askWeChat(Driver &driver)
{
    SignIn::acceptAgreement(driver);
    return driver.seeOpened([&] { driver.tap(u"微信登录"_s, QAccessible::Button); });
}

void wechatRefused(Driver &driver)
{
    const QUrl page = askWeChat(driver);
    driver.seeToast(u"授权失败"_s, [&] { WeChatPage::press(driver, page, WeChatPage::refuse); });
}

// An identity without an account is to be bound to one; the way back leads to the login screen.
void wechatBinding(Driver &driver)
{
    WeChatPage::press(driver, askWeChat(driver), WeChatPage::agreeAsNewcomer);
    driver.see(u"账号绑定"_s, QAccessible::Heading);
    driver.see(u"登录成长平台并与微信绑定"_s);
    driver.photograph();
    driver.tap(Texts::back, QAccessible::Button);
    driver.seeNothingOf(u"账号绑定"_s, QAccessible::Heading);
    SignIn::seeLoginScreen(driver, Account::school);
}

void agreementPage(Driver &driver)
{
    SignIn::acceptAgreement(driver);
    for (const QString &title : {u"用户协议"_s, u"隐私政策"_s}) {
        driver.tap(u"《%1》"_s.arg(title), QAccessible::Link);
        driver.see(title, QAccessible::Heading);
        driver.seeInPage(u"h1"_s, title);
        driver.photograph();
        driver.tap(Texts::back, QAccessible::Button);
        driver.seeNothingOf(title, QAccessible::Heading);
        SignIn::seeLoginScreen(driver, Account::school);
    }
    driver.waitFor(u"the agreement's box to be unchecked again"_s, [&] {
        const auto box = driver.screen().find(Texts::agreementBox, QAccessible::CheckBox);
        return box && !box->checked;
    });
}

void wrongPasswordRefused(Driver &driver)
{
    driver.wire().mark();
    driver.seeToast(u"账号或密码错误，请重新输入"_s,
        [&] { SignIn::tryWith(driver, Account::userCode, wrongPassword); });
    const auto calls = driver.wire().requests(isCall(u"login4H5"_s));
    driver.check(calls.size() == 1 && calls[0].value(u"user_pwd"_s) == wrongPassword,
        u"one sign-in was tried, with what was typed"_s);
    const auto field = driver.screen().find(Texts::accountField, QAccessible::EditableText);
    driver.check(field && field->value == Account::userCode, u"the account stays in its field"_s);
}

void loginProgress(Driver &driver)
{
    driver.seeNoToast();
    driver.wire().spoil({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, slowAnswerMs}});
    SignIn::tryWith(driver, Account::userCode, wrongPassword);
    driver.see(u"登录中"_s);
    driver.photograph();
    driver.seeNothingOf(u"登录中"_s);
}

void signIn(Driver &driver)
{
    driver.wire().mark();
    SignIn::tryWith(driver, Account::userCode, Account::password);
    SignIn::seePortal(driver);
}

// What came since the sign-in: the portal's own page first, then what it loads.
void portalCookies(Driver &driver)
{
    const auto pages = driver.wire().requests(isPath(u"/portal/index.html"_s));
    driver.check(!pages.isEmpty(), u"the portal was asked for"_s);
    for (const QString &name : {u"mo"_s, u"tmo"_s, u"rblgin"_s})
        driver.check(
            hasCookie(pages[0], name), u"the portal's first request carries %1"_s.arg(name));
    driver.check(cookiesOf(pages[0]).contains(u"rblgin=1"_s), u"the marker is rblgin=1"_s);
    for (const TracedRequest &request : driver.wire().requests()) {
        driver.check(request.path == pages[0].path || !hasCookie(request, u"rblgin"_s),
            u"%1 is sent without the marker"_s.arg(request.path));
    }
    const QString visible = driver.page().read(u"document.cookie"_s).toString();
    driver.check(visible.contains(u"mo="_s) && !visible.contains(u"rblgin"_s),
        u"document.cookie has the session and no marker"_s);
    driver.check(pages[0].headers.value(u"user-agent"_s).endsWith(u" VANT-IOS iphone"_s),
        u"the user agent ends with the client's name"_s);
    driver.note(
        u"first request: mo, tmo, rblgin=1; later ones and document.cookie without the marker"_s);
}

}

QList<Step> loginSteps()
{
    const QString screen = u"login-screen"_s;
    const QString list = u"school-list"_s;
    const QString byName = u"school-by-name"_s;
    const QString chosen = u"school-chosen"_s;
    const QString signedIn = u"sign-in"_s;
    return {
        {screen, {u"update-forced"_s}, Lives::signIn, loginScreen,
            [](Wire &wire) { wire.setNotices(u"none"_s, u"none"_s); }},
        {u"forgotten-password"_s, {screen}, Lives::signIn, forgottenPassword},
        {u"nothing-chosen"_s, {screen}, Lives::signIn, nothingChosen},
        {list, {screen}, Lives::signIn, schoolList},
        {u"school-by-letter"_s, {list}, Lives::signIn, schoolByLetter},
        {byName, {list}, Lives::signIn, schoolByName},
        {chosen, {byName}, Lives::signIn, schoolChosen},
        {u"agreement-unchecked"_s, {chosen}, Lives::signIn, agreementUnchecked},
        {u"wechat-refused"_s, {chosen}, Lives::signIn, wechatRefused},
        {u"wechat-binding"_s, {chosen}, Lives::signIn, wechatBinding},
        {u"agreement-pages"_s, {chosen}, Lives::signIn, agreementPage},
        {u"wrong-password"_s, {chosen}, Lives::signIn, wrongPasswordRefused},
        {u"login-progress"_s, {chosen}, Lives::signIn, loginProgress},
        {signedIn, {chosen}, Lives::signIn, signIn},
        {u"portal-cookies"_s, {signedIn}, Lives::signIn, portalCookies},
    };
}
