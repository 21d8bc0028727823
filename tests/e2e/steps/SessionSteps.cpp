#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostTabs = 20;
const QString missedPage = QStringLiteral("/portal/plain.html?from=missed");
const QString expired = QStringLiteral("登录已过期，请重新登录");

// By one of the bridge page's handlers, from there or from the portal.
void signOutBy(Driver &driver, const QString &handler)
{
    if (!driver.page().path().startsWith(u"/portal/bridge.html"_s))
        BridgePage::open(driver);
    BridgePage::press(driver, handler);
    SignIn::seeLoginScreen(driver);
    for (const QString &field : {Texts::accountField, Texts::passwordField}) {
        driver.check(
            driver.see(field, EditableText).value.isEmpty(), u"the field %1 is empty"_s.arg(field));
    }
    driver.check(!driver.see(Texts::agreementBox, CheckBox).checked,
        u"the agreement is to be accepted anew"_s);
}

// A session of its own, carried by the first request as at the first sign-in.
void seeNewPortal(Driver &driver)
{
    SignIn::seePortal(driver);
    const TracedRequest page = driver.firstRequestFor(u"/portal/index.html"_s);
    const QStringList names {u"mo"_s, u"tmo"_s, u"rblgin"_s};
    for (const QString &name : names)
        driver.check(hasCookie(page, name), u"the portal's first request carries %1"_s.arg(name));
}

void seeOnlyTheNewSession(Driver &driver)
{
    seeNewPortal(driver);
    const TracedRequest call = driver.seeCall(u"login4H5"_s);
    driver.check(!hasCookie(call, u"mo"_s) && !hasCookie(call, u"tmo"_s),
        u"the sign-in was sent without the session that was left"_s);
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

}

void sessionSteps(Journey &journey)
{
    journey.step(u"bridge-jump2LoginPage"_s, u"sign-in"_s,
        [](Driver &driver) { signOutBy(driver, u"jump2LoginPage"_s); });

    // The identity has an account already.
    journey.step(u"sign-in-by-wechat"_s, u"bridge-jump2LoginPage"_s, [](Driver &driver) {
        driver.wire().mark();
        WeChatPage::press(driver, WeChatPage::ask(driver), WeChatPage::agree);
        seeNewPortal(driver);
        driver.seeCall(u"login4AppWeixin"_s);
        driver.check(
            driver.wire().requests(isCall(u"login4H5"_s)).isEmpty(), u"no password was sent"_s);
    });

    journey.step(u"sign-out-once-more"_s, u"sign-in-by-wechat"_s,
        [](Driver &driver) { signOutBy(driver, u"jump2LoginPage"_s); });

    journey.step(u"sign-in-by-mouse"_s, u"sign-out-once-more"_s, [](Driver &driver) {
        driver.wire().mark();
        driver.click(Texts::accountField, EditableText);
        driver.hand().type(Pupil::userCode);
        driver.click(Texts::passwordField, EditableText);
        driver.hand().type(Pupil::password);
        driver.click(Texts::agreementBox, CheckBox);
        driver.click(Texts::loginButton, Button);
        seeOnlyTheNewSession(driver);
    });

    journey.step(u"bridge-logout"_s, u"sign-in-by-mouse"_s,
        [](Driver &driver) { signOutBy(driver, u"logout"_s); });

    journey.step(u"sign-in-by-keyboard"_s, u"bridge-logout"_s, [](Driver &driver) {
        driver.wire().mark();
        tabTo(driver, Texts::accountField, EditableText);
        driver.hand().type(Pupil::userCode);
        tabTo(driver, Texts::passwordField, EditableText);
        driver.hand().type(Pupil::password);
        tabTo(driver, Texts::agreementBox, CheckBox);
        driver.hand().press(Qt::Key_Space);
        tabTo(driver, Texts::loginButton, Button);
        driver.photograph();
        driver.hand().press(Qt::Key_Return);
        seeOnlyTheNewSession(driver);
    });

    journey.step(u"quit"_s, u"sign-in-by-keyboard"_s, [](Driver &driver) {
        driver.photograph();
        driver.window()->close();
        driver.waitFor(u"the window to close"_s, [&] { return !driver.window()->isVisible(); });
    });

    // With the stored login, and a message that was sent while the client did not run.
    journey.startClient({[](Wire &wire) { wire.push(missedPage); }, {}});
    journey.step(u"start-again"_s, u"quit"_s, [](Driver &driver) {
        bool loginShown = false;
        driver.waitFor(u"the portal"_s, [&] {
            loginShown |= driver.screen().shows(Texts::loginButton, Button);
            return driver.page().path().startsWith(u"/portal/index.html"_s);
        });
        driver.check(!loginShown, u"the login screen stays away"_s);
        seeNewPortal(driver);
        const TracedRequest call = driver.seeCall(u"login4H5"_s);
        driver.check(call.value(u"login_type"_s) == u"3" && !call.value(u"login_token"_s).isEmpty(),
            u"the sign-in was by the stored token"_s);
    });

    journey.step(u"missed-push"_s, u"start-again"_s, [](Driver &driver) {
        driver.see(Texts::pushQuestion);
        driver.answer(Texts::confirm, Texts::pushQuestion);
        driver.seePage(missedPage, u"#address"_s);
    });

    journey.startClient({[](Wire &wire) {
                             const QJsonObject body {{u"code"_s, 401}, {u"msg"_s, expired}};
                             wire.spoil({{u"start"_s, u"login4H5"_s}, {u"body"_s, body}});
                         },
        {}});
    journey.step(u"expired-token"_s, u"start-again"_s, [](Driver &driver) {
        driver.seeToast(expired, [] {});
        SignIn::seeLoginScreen(driver);
    });
}
