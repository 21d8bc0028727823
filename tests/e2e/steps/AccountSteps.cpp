#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"
#include "model/DeploymentConfiguration.h"

using namespace Qt::StringLiterals;

namespace {

const QString chooseProvinces = QStringLiteral("选择省份");
const QString chooseCity = QStringLiteral("选择城市");
const QString chosenCity = QStringLiteral("福建-厦门");
const QString pickerTitle = QStringLiteral("选择省市");
const QString olderAccountField = QStringLiteral("账号\\手机号码");
const QString activation = QStringLiteral("账号激活");
const QString numberField = QStringLiteral("学号/工号");
const QString cardField = QStringLiteral("证件号码");

// Somebody whose account was never used.
const QString newcomerNo = QStringLiteral("20240007");
const QString newcomerCard = QStringLiteral("350203201209124522");
const QString newcomerName = QStringLiteral("曾可欣");
const QString newcomerCode = QStringLiteral("kexin2024");
const QString newcomerPassword = QStringLiteral("kexin-1");

// A wheel that still turns takes a touch for a wish to stop it.
void turnTo(Driver &driver, const QStringList &rows)
{
    for (const QString &row : rows) {
        driver.photograph();
        driver.tap(row, ListItem);
    }
    driver.photograph();
    driver.tap(Texts::confirm, Button);
}

}

void accountSteps(Journey &journey)
{
    journey.startClient(
        {{}, [](DeploymentConfiguration &deployment) { deployment.app.loginScreen = u"older"_s; }});
    const QString screen = u"older-login-screen"_s;
    journey.step(screen, u"expired-token"_s, [](Driver &driver) {
        driver.seeAll({chooseProvinces, chooseCity, Pupil::school, olderAccountField,
            Texts::passwordField, Texts::agreementBox, activation});
        driver.note(driver.screen().description());
    });

    journey.step(u"city-needs-province"_s, screen, [](Driver &driver) {
        driver.seeToast(u"请先选择省市"_s, [&] { driver.tap(chooseCity); });
    });

    journey.step(u"city-without-school"_s, screen, [](Driver &driver) {
        driver.wire().mark();
        driver.tap(chooseProvinces);
        driver.see(pickerTitle, Heading);
        driver.seeCall(u"tree"_s);
        driver.see(u"北京"_s, ListItem);
        driver.hand().press(Qt::Key_End);
        driver.see(u"新疆"_s, ListItem);
        driver.hand().press(Qt::Key_Right);
        driver.hand().press(Qt::Key_End);
        driver.see(u"吐鲁番"_s, ListItem);
        driver.seeToast(u"您所选的地区没入驻学校，请确认选择的地区是否错误?"_s, Texts::confirm);
        driver.seeAll({u"新疆-吐鲁番"_s, Texts::chooseSchool});
    });

    journey.step(u"city-picked"_s, u"city-without-school"_s, [](Driver &driver) {
        driver.seeNoToast();
        driver.tap(u"新疆"_s);
        driver.see(u"乌鲁木齐"_s, ListItem);
        driver.hand().press(Qt::Key_Home);
        turnTo(driver, {u"上海"_s, u"福建"_s, u"福州"_s, u"厦门"_s});
        driver.see(chosenCity);
        driver.seeNothingOf(pickerTitle, QAccessible::Dialog);
    });

    journey.step(u"school-picked"_s, u"city-picked"_s, [](Driver &driver) {
        driver.seeToast(u"请先选择学校"_s, [&] { driver.tap(olderAccountField); });
        driver.seeNoToast();
        driver.tap(Texts::chooseSchool);
        driver.see(Texts::chooseSchool, Heading);
        turnTo(driver, {Pupil::school});
        driver.see(Pupil::school, Button);
        driver.seeNothingOf(Texts::chooseSchool, QAccessible::Dialog);
    });

    journey.step(u"activation-refused"_s, u"school-picked"_s, [](Driver &driver) {
        driver.tap(activation, Button);
        driver.see(u"账号启用设置"_s, Heading);
        driver.enter(numberField, newcomerNo);
        driver.enter(cardField, newcomerCard.chopped(1));
        driver.seeToast(u"请输入正确证件号码"_s, u"激活"_s);
    });

    journey.step(u"activation-verified"_s, u"activation-refused"_s, [](Driver &driver) {
        driver.wire().mark();
        driver.enter(cardField, newcomerCard);
        driver.seeToast(u"激活成功"_s, u"激活"_s);
        driver.see(u"您好，%1同学"_s.arg(newcomerName), Heading);
        driver.seeAll({u"验证成功"_s, numberField});
        const TracedRequest call = driver.seeCall(u"verifyAccount"_s);
        driver.check(
            call.value(u"user_no"_s) == newcomerNo && call.value(u"card_no"_s) == newcomerCard,
            u"number and card were sent"_s);
    });

    journey.step(u"activation-set"_s, u"activation-verified"_s, [](Driver &driver) {
        driver.seeNoToast();
        driver.enter(u"请设置登录账号"_s, newcomerCode);
        driver.enter(u"请设置密码，不小于6位"_s, newcomerPassword);
        driver.enter(u"请再次输入密码"_s, newcomerPassword);
        driver.photograph();
        driver.tap(Texts::confirm, Button);
        driver.see(u"设置成功"_s, QAccessible::AlertMessage);
        driver.seeAll({activation, chosenCity});
    });

    journey.step(u"sign-in-with-new-account"_s, u"activation-set"_s, [](Driver &driver) {
        driver.seeNoToast();
        driver.enter(olderAccountField, newcomerCode);
        driver.enter(Texts::passwordField, newcomerPassword);
        SignIn::acceptAgreement(driver);
        driver.photograph();
        driver.tap(Texts::loginButton, Button);
        SignIn::seePortal(driver, newcomerName);
    });
}
