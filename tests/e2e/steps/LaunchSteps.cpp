#include "e2e/driver/Patience.h"
#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

const QString skip = QStringLiteral("跳过");
const QString tryNow = QStringLiteral("立即体验");
const QString agreeToAll = QStringLiteral("同意");
const QString notNow = QStringLiteral("暂不使用");
const QString noticeTitle = QStringLiteral("感谢您使用成长平台");
const QString updateTitle = QStringLiteral("版本更新");
constexpr int framePauseMs = 250;

//! What the advertisement's button says now, null when there is none.
QString countdown(const Driver &driver)
{
    for (const Screen::Thing &thing : driver.screen().things()) {
        if (thing.role == Button && thing.name.startsWith(skip + u' '))
            return thing.name;
    }
    return {};
}

QString seeAd(Driver &driver)
{
    driver.waitFor(u"the advertisement"_s, [&] { return !countdown(driver).isNull(); });
    return countdown(driver);
}

// Without the button's corner, whose seconds pass.
Picture pictureOfAd(const Driver &driver)
{
    return Picture::of(driver.window()).below(driver.window()->height() / 4.0);
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

Journey::Start telling(const QString &ad, const QString &update)
{
    return {[=](Wire &wire) { wire.setNotices(ad, update); }, {}};
}

}

void launchSteps(Journey &journey)
{
    // A first start that ends with a refusal.
    journey.startClient();
    journey.step(u"guide"_s, {}, [](Driver &driver) {
        driver.see(u"欢迎使用成长平台"_s, Heading);
        driver.see(skip, Button);
        driver.photograph();
        swipe(driver);
        driver.see(u"校园生活，尽在掌握"_s, Heading);
        driver.see(skip, Button);
    });

    journey.step(u"guide-last-page"_s, u"guide"_s, [](Driver &driver) {
        swipe(driver);
        driver.see(u"记录与分享，随手完成"_s, Heading);
        driver.see(tryNow, Button);
        driver.seeNothingOf(skip, Button);
    });

    journey.step(u"guide-tip"_s, u"guide-last-page"_s, [](Driver &driver) {
        driver.tap(tryNow, Button);
        SignIn::readAgreements(driver);
        driver.see(agreeToAll, Button);
        driver.photograph();
    });

    journey.step(u"notice"_s, u"guide-tip"_s, [](Driver &driver) {
        driver.tap(agreeToAll, Button);
        driver.see(noticeTitle, Heading);
        driver.seeAll(
            {u"用户证件号"_s, u"出生日期"_s, u"手机号码"_s, u"联系电话"_s, u"电子邮箱"_s});
        driver.photograph();
        driver.seeAll({u"如您同意，请点击“同意“开始使用"_s, notNow, agreeToAll});
        checkNothingPersonalLeft(driver);
    });

    Step &refusal = journey.step(u"notice-refused"_s, u"notice"_s, [](Driver &driver) {
        driver.tap(notNow, Button);
        driver.waitFor(u"the program to end"_s, [] { return false; });
    });
    refusal.endsProgram = true;

    // A first start that goes on.
    journey.startClient(telling(u"still"_s, u"none"_s));
    journey.step(u"ad-still"_s, u"notice-refused"_s, [](Driver &driver) {
        const QString first = seeAd(driver);
        driver.photograph();
        driver.hand().tap({driver.window()->width() / 2.0, driver.window()->height() / 2.0});
        driver.waitFor(u"the seconds to pass"_s,
            [&] { return !countdown(driver).isNull() && countdown(driver) != first; });
        driver.check(driver.window()->isVisible() && !driver.screen().webView(),
            u"a tap on the picture opens nothing"_s);
        seeAdGone(driver);
        driver.note(u"began with \"%1\" and went by itself"_s.arg(first));
    });

    journey.step(u"notice-accepted"_s, u"ad-still"_s, [](Driver &driver) {
        driver.see(noticeTitle, Heading);
        checkNothingPersonalLeft(driver);
        driver.tap(agreeToAll, Button);
        driver.seeNothingOf(noticeTitle);
        SignIn::seeLoginScreen(driver, Texts::chooseSchool);
    });

    journey.startClient(telling(u"animated"_s, u"optional"_s));
    journey.step(u"ad-animated"_s, u"notice-accepted"_s, [](Driver &driver) {
        seeAd(driver);
        const Picture before = pictureOfAd(driver);
        driver.waitFor(u"the picture to move"_s, [&] {
            Patience::pass(framePauseMs);
            return !(pictureOfAd(driver) == before);
        });
        driver.photograph();
        driver.tap(countdown(driver), Button);
        seeAdGone(driver);
    });

    journey.step(u"update-optional"_s, u"ad-animated"_s, [](Driver &driver) {
        driver.seeAll({updateTitle, Texts::confirm});
        driver.answer(Texts::cancel, updateTitle);
        driver.check(driver.desktop().opened().isEmpty(), u"no page is opened"_s);
        SignIn::seeLoginScreen(driver, Texts::chooseSchool);
        driver.seeNothingOf(noticeTitle);
    });

    journey.startClient(telling(u"none"_s, u"forced"_s));
    journey.step(u"update-forced"_s, u"update-optional"_s, [](Driver &driver) {
        driver.seeAll({updateTitle, Texts::confirm});
        driver.check(!driver.screen().shows(Texts::cancel, Button), u"there is no way around it"_s);
        driver.hand().press(Qt::Key_Escape);
        const QUrl page = driver.seeOpened([&] { driver.answer(Texts::confirm, updateTitle); });
        driver.check(page.path() == u"/pages/official/h5/download.jsp", page.toString());
        driver.note(u"opened "_s + page.toString());
        SignIn::seeLoginScreen(driver, Texts::chooseSchool);
    });
}
