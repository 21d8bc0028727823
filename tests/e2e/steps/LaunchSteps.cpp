#include "e2e/steps/Steps.h"

#include "e2e/driver/Driver.h"
#include "e2e/driver/Patience.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

const QString skip = QStringLiteral("跳过");
const QString tryNow = QStringLiteral("立即体验");
const QString agree = QStringLiteral("同意");
const QString refuse = QStringLiteral("暂不使用");
const QString noticeTitle = QStringLiteral("感谢您使用成长平台");
const QString updateTitle = QStringLiteral("版本更新");
constexpr int framePauseMs = 250;

//! What the advertisement's button says now, null when there is none.
QString countdown(const Driver &driver)
{
    for (const Screen::Thing &thing : driver.screen().things()) {
        if (thing.role == QAccessible::Button && thing.name.startsWith(skip + u' '))
            return thing.name;
    }
    return {};
}

void seeAd(Driver &driver)
{
    driver.waitFor(u"the advertisement"_s, [&] { return !countdown(driver).isNull(); });
}

//! The colours all over the picture, the button's corner left out.
QList<QColor> colorsOf(QQuickWindow *window)
{
    constexpr int points = 40;
    const Picture picture = Picture::of(window);
    QList<QColor> colors;
    for (int y = points / 4; y < points; ++y)
        for (int x = 0; x < points; ++x)
            colors << picture.colorAt(
                {(x + 0.5) * window->width() / points, (y + 0.5) * window->height() / points});
    return colors;
}

// It takes every touch until it has faded.
void seeAdGone(Driver &driver)
{
    driver.waitFor(u"the advertisement's end"_s, [&] { return countdown(driver).isNull(); });
    driver.waitFor(u"the fade to end"_s, [&] {
        const Picture before = Picture::of(driver.window());
        Patience::pass(framePauseMs);
        return Picture::of(driver.window()) == before;
    });
}

// Everything that a client asks for before it may know the person.
void checkNothingPersonalLeft(Driver &driver)
{
    const QStringList innocent {u"listAd4App"_s, u"appUpdateInfo"_s, u"agreement"_s};
    for (const TracedRequest &request : driver.wire().requests()) {
        const QString start = request.value(u"start"_s);
        driver.check(start.isNull() || innocent.contains(start),
            u"%1 %2 may be asked for without consent"_s.arg(request.path, start));
        driver.check(!request.headers.contains(u"cookie"_s) && request.value(u"c_id"_s).isNull()
                && request.value(u"client_code"_s).isNull(),
            u"%1 names nobody"_s.arg(request.path));
    }
}

void swipe(Driver &driver)
{
    const double middle = driver.window()->height() / 2.0;
    const double width = driver.window()->width();
    driver.hand().drag({width * 0.85, middle}, {width * 0.15, middle});
}

void guidePages(Driver &driver)
{
    driver.see(u"欢迎使用成长平台"_s, QAccessible::Heading);
    driver.see(skip, QAccessible::Button);
    driver.photograph();
    swipe(driver);
    driver.see(u"校园生活，尽在掌握"_s, QAccessible::Heading);
    driver.see(skip, QAccessible::Button);
}

void guideLastPage(Driver &driver)
{
    swipe(driver);
    driver.see(u"记录与分享，随手完成"_s, QAccessible::Heading);
    driver.see(tryNow, QAccessible::Button);
    driver.seeNothingOf(skip, QAccessible::Button);
}

void guideTip(Driver &driver)
{
    driver.tap(tryNow, QAccessible::Button);
    for (const QString &title : {u"用户协议"_s, u"隐私政策"_s}) {
        driver.tap(u"《%1》"_s.arg(title), QAccessible::Link);
        driver.seeInPage(u"h1"_s, title);
        driver.tap(Texts::back, QAccessible::Button);
        driver.seeNothingOf(title, QAccessible::Heading);
        driver.waitFor(
            u"the page to be gone"_s, [&] { return driver.screen().webView() == nullptr; });
    }
    driver.see(agree, QAccessible::Button);
}

void notice(Driver &driver)
{
    driver.tap(agree, QAccessible::Button);
    driver.see(noticeTitle, QAccessible::Heading);
    driver.seeAll({u"用户证件号"_s, u"出生日期"_s, u"手机号码"_s, u"联系电话"_s, u"电子邮箱"_s});
    driver.photograph();
    driver.see(u"如您同意，请点击“同意“开始使用"_s);
    driver.seeAll({refuse, agree});
    checkNothingPersonalLeft(driver);
}

void refuseNotice(Driver &driver)
{
    driver.tap(refuse, QAccessible::Button);
    driver.waitFor(u"the program to end"_s, [] { return false; });
}

void stillAd(Driver &driver)
{
    seeAd(driver);
    const QString first = countdown(driver);
    driver.photograph();
    driver.hand().tap({driver.window()->width() / 2.0, driver.window()->height() / 2.0});
    driver.waitFor(u"the seconds to pass"_s,
        [&] { return !countdown(driver).isNull() && countdown(driver) != first; });
    driver.check(driver.window()->isVisible() && !driver.screen().webView(),
        u"a tap on the picture opens nothing"_s);
    seeAdGone(driver);
    driver.note(u"began with \"%1\" and went by itself"_s.arg(first));
}

void acceptNotice(Driver &driver)
{
    driver.see(noticeTitle, QAccessible::Heading);
    checkNothingPersonalLeft(driver);
    driver.tap(agree, QAccessible::Button);
    driver.seeNothingOf(noticeTitle);
    SignIn::seeLoginScreen(driver, Texts::chooseSchool);
}

void animatedAd(Driver &driver)
{
    seeAd(driver);
    const QList<QColor> before = colorsOf(driver.window());
    driver.waitFor(u"the picture to move"_s, [&] {
        Patience::pass(framePauseMs);
        return colorsOf(driver.window()) != before;
    });
    driver.photograph();
    driver.tap(countdown(driver), QAccessible::Button);
    seeAdGone(driver);
}

void optionalUpdate(Driver &driver)
{
    driver.seeAll({updateTitle, Texts::cancel, Texts::confirm});
    driver.photograph();
    driver.tap(Texts::cancel, QAccessible::Button);
    driver.seeNothingOf(updateTitle);
    driver.check(driver.desktop().opened().isEmpty(), u"no page is opened"_s);
    SignIn::seeLoginScreen(driver, Texts::chooseSchool);
    driver.seeNothingOf(noticeTitle);
}

void forcedUpdate(Driver &driver)
{
    driver.seeAll({updateTitle, Texts::confirm});
    driver.check(
        !driver.screen().shows(Texts::cancel, QAccessible::Button), u"there is no way around it"_s);
    driver.hand().press(Qt::Key_Escape);
    driver.photograph();
    const QUrl page = driver.seeOpened([&] { driver.tap(Texts::confirm, QAccessible::Button); });
    driver.check(page.path() == u"/pages/official/h5/download.jsp", page.toString());
    driver.note(u"opened "_s + page.toString());
    SignIn::seeLoginScreen(driver, Texts::chooseSchool);
}

}

QList<Step> launchSteps()
{
    const QString guide = u"guide"_s;
    const QString last = u"guide-last-page"_s;
    const QString tip = u"guide-tip"_s;
    const QString asked = u"notice"_s;
    const QString refused = u"notice-refused"_s;
    const QString still = u"ad-still"_s;
    const QString accepted = u"notice-accepted"_s;
    const QString animated = u"ad-animated"_s;
    const QString offered = u"update-optional"_s;
    const auto tell = [](const QString &ad, const QString &update) {
        return [=](Wire &wire) { wire.setNotices(ad, update); };
    };
    return {
        {guide, {}, Lives::refusal, guidePages},
        {last, {guide}, Lives::refusal, guideLastPage},
        {tip, {last}, Lives::refusal, guideTip},
        {asked, {tip}, Lives::refusal, notice},
        {refused, {asked}, Lives::refusal, refuseNotice, {}, {}, true},
        {still, {refused}, Lives::consent, stillAd, tell(u"still"_s, u"none"_s)},
        {accepted, {still}, Lives::consent, acceptNotice},
        {animated, {accepted}, Lives::offer, animatedAd, tell(u"animated"_s, u"optional"_s)},
        {offered, {animated}, Lives::offer, optionalUpdate},
        {u"update-forced"_s, {offered}, Lives::demand, forcedUpdate, tell(u"none"_s, u"forced"_s)},
    };
}
