#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr int leastRowHeight = 44;
constexpr int slowAnswerMs = 2'000;
const QString wrongPassword = QStringLiteral("vant0000");

// The rows as wide as the window.
QStringList schoolsShown(const Driver &driver)
{
    QStringList names;
    for (const Screen::Thing &thing : driver.screen().things()) {
        if (thing.place.width() == driver.window()->width()
            && thing.place.height() > leastRowHeight)
            names << thing.name;
    }
    return names;
}

}

void loginSteps(Journey &journey)
{
    journey.startClient({[](Wire &wire) { wire.setNotices(u"none"_s, u"none"_s); }, {}});
    const QString screen = u"login-screen"_s;
    journey.step(screen, u"update-forced"_s, [](Driver &driver) {
        SignIn::seeLoginScreen(driver, Texts::chooseSchool);
        driver.seeAll({u"成长平台"_s, u"忘记密码"_s, u"第三方账号登录"_s});
        driver.check(!driver.see(Texts::agreementBox, CheckBox).checked,
            u"the agreement is not accepted beforehand"_s);
        driver.note(driver.screen().description());
    });

    journey.step(u"forgotten-password"_s, screen, [](Driver &driver) {
        driver.tap(u"忘记密码"_s);
        driver.see(Texts::close, Button);
        driver.note(driver.screen().description());
        driver.answer(Texts::close, Texts::close);
    });

    journey.step(u"nothing-chosen"_s, screen,
        [](Driver &driver) { driver.seeToast(u"请选择学校"_s, Texts::loginButton); });

    journey.step(u"school-list"_s, screen, [](Driver &driver) {
        driver.wire().mark();
        driver.tap(Texts::chooseSchool);
        driver.see(Texts::searchField, EditableText);
        driver.see(Texts::chooseSchool, Heading);
        driver.seeCall(u"cndSite"_s);
        // Names without a letter at their start stand before A.
        driver.see(u"#"_s, Heading);
        driver.waitFor(u"schools"_s, [&] { return !schoolsShown(driver).isEmpty(); });
        driver.note(schoolsShown(driver).join(u" | "));
    });

    journey.step(u"school-by-letter"_s, u"school-list"_s, [](Driver &driver) {
        driver.enter(Texts::searchField, u"w"_s);
        driver.see(u"W"_s, Heading);
        driver.seeNothingOf(u"#"_s, Heading);
        driver.note(schoolsShown(driver).join(u" | "));
    });

    journey.step(u"school-by-name"_s, u"school-list"_s, [](Driver &driver) {
        driver.enter(Texts::searchField, Pupil::school);
        driver.see(Pupil::school);
        driver.waitFor(u"the other schools to go"_s, [&] {
            const QStringList shown = schoolsShown(driver);
            return !shown.isEmpty() && shown.filter(Pupil::school) == shown;
        });
        driver.note(schoolsShown(driver).join(u" | "));
    });

    const QString chosen = u"school-chosen"_s;
    journey.step(chosen, u"school-by-name"_s, [](Driver &driver) {
        driver.wire().mark();
        driver.tap(Pupil::school);
        SignIn::seeLoginScreen(driver);
        driver.check(driver.seeCall(u"getSetting4App"_s).value(u"site_id"_s) == Pupil::siteId,
            u"the logo of the school's site was asked for"_s);
        driver.waitFor(u"the logo itself to be loaded"_s, [&] {
            const auto isLogo = [](const TracedRequest &request) {
                return request.path.startsWith(u"/images/school-");
            };
            return !driver.wire().requests(isLogo).isEmpty();
        });
    });

    journey.step(u"agreement-unchecked"_s, chosen, [](Driver &driver) {
        driver.enter(Texts::accountField, Pupil::userCode);
        driver.enter(Texts::passwordField, wrongPassword);
        driver.wire().mark();
        driver.seeToast(u"请勾选已阅读同意《用户协议》和《隐私政策》"_s, Texts::loginButton);
        driver.check(driver.wire().requests(isCall(u"login4H5"_s)).isEmpty(),
            u"nothing is sent before the agreement is accepted"_s);
    });

    journey.step(u"wechat-refused"_s, chosen, [](Driver &driver) {
        const QUrl page = WeChatPage::ask(driver);
        driver.seeToast(
            u"授权失败"_s, [&] { WeChatPage::press(driver, page, WeChatPage::refuse); });
    });

    // An identity without an account is to be bound to one; the way back leads to the login screen.
    journey.step(u"wechat-binding"_s, chosen, [](Driver &driver) {
        WeChatPage::press(driver, WeChatPage::ask(driver), WeChatPage::agreeAsNewcomer);
        driver.seeAll({u"账号绑定"_s, u"登录成长平台并与微信绑定"_s});
        driver.answer(Texts::back, u"账号绑定"_s);
        SignIn::seeLoginScreen(driver);
    });

    journey.step(u"agreement-pages"_s, chosen, [](Driver &driver) {
        SignIn::acceptAgreement(driver);
        SignIn::readAgreements(driver);
        SignIn::seeLoginScreen(driver);
        driver.waitFor(u"the agreement's box to be unchecked again"_s,
            [&] { return !driver.see(Texts::agreementBox, CheckBox).checked; });
    });

    journey.step(u"wrong-password"_s, chosen, [](Driver &driver) {
        driver.wire().mark();
        driver.seeToast(
            u"账号或密码错误，请重新输入"_s, [&] { SignIn::tryWith(driver, wrongPassword); });
        driver.check(driver.seeCall(u"login4H5"_s).value(u"user_pwd"_s) == wrongPassword,
            u"one sign-in was tried, with what was typed"_s);
        driver.check(driver.see(Texts::accountField, EditableText).value == Pupil::userCode,
            u"the account stays in its field"_s);
    });

    journey.step(u"login-progress"_s, chosen, [](Driver &driver) {
        driver.seeNoToast();
        driver.wire().spoil({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, slowAnswerMs}});
        SignIn::tryWith(driver, wrongPassword);
        driver.see(u"登录中"_s);
        driver.photograph();
        driver.seeNothingOf(u"登录中"_s);
    });

    const QString signedIn = u"sign-in"_s;
    journey.step(signedIn, chosen, [](Driver &driver) {
        driver.wire().mark();
        SignIn::tryWith(driver, Pupil::password);
        SignIn::seePortal(driver);
    });

    // What came since the sign-in: the portal's own page first, then what it loads.
    journey.step(u"portal-cookies"_s, signedIn, [](Driver &driver) {
        const TracedRequest page = driver.firstRequestFor(u"/portal/index.html"_s);
        const QStringList names {u"mo"_s, u"tmo"_s, u"rblgin"_s};
        for (const QString &name : names)
            driver.check(hasCookie(page, name), u"the first request carries %1"_s.arg(name));
        driver.check(cookiesOf(page).contains(u"rblgin=1"_s), u"the marker is rblgin=1"_s);
        for (const TracedRequest &request : driver.wire().requests()) {
            driver.check(request.path == page.path || !hasCookie(request, u"rblgin"_s),
                u"%1 is sent without the marker"_s.arg(request.path));
        }
        const QString visible = driver.page().read(u"document.cookie"_s).toString();
        driver.check(visible.contains(u"mo="_s) && !visible.contains(u"rblgin"_s),
            u"document.cookie has the session and no marker"_s);
        driver.check(page.headers.value(u"user-agent"_s).endsWith(u" VANT-IOS iphone"_s),
            u"the user agent ends with the client's name"_s);
        driver.note(u"first request: mo, tmo, rblgin=1; neither later ones nor document.cookie "
                    "have the marker"_s);
    });
}
