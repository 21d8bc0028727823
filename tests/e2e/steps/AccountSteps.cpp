#include "e2e/steps/Steps.h"

#include "e2e/steps/Account.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"
#include "model/DeploymentConfiguration.h"

using namespace Qt::StringLiterals;

namespace {

const QString chooseProvinces = QStringLiteral("选择省份");
const QString chooseCity = QStringLiteral("选择城市");
const QString chosenCity = QStringLiteral("福建-厦门");
const QString pickerTitle = QStringLiteral("选择省市");
const QString accountField = QStringLiteral("账号\\手机号码");
const QString activation = QStringLiteral("账号激活");
const QString numberField = QStringLiteral("学号/工号");
const QString cardField = QStringLiteral("证件号码");

// Somebody whose account was never used.
const QString userNo = QStringLiteral("20240007");
const QString cardNo = QStringLiteral("350203201209124522");
const QString userName = QStringLiteral("曾可欣");
const QString userCode = QStringLiteral("kexin2024");
const QString password = QStringLiteral("kexin-1");

void chooseOlderScreen(DeploymentConfiguration &deployment)
{
    deployment.app.loginScreen = u"older"_s;
}

// A wheel that still turns takes a touch for a wish to stop it.
void turnTo(Driver &driver, const QString &row)
{
    driver.photograph();
    driver.tap(row, QAccessible::ListItem);
    driver.photograph();
}

void olderScreen(Driver &driver)
{
    driver.seeAll({chooseProvinces, chooseCity, Account::school, accountField, Texts::passwordField,
        Texts::agreementBox, activation});
    driver.note(driver.screen().description());
}

void cityNeedsProvince(Driver &driver)
{
    driver.seeToast(u"请先选择省市"_s, [&] { driver.tap(chooseCity); });
}

void cityWithoutSchool(Driver &driver)
{
    driver.wire().mark();
    driver.tap(chooseProvinces);
    driver.see(pickerTitle, QAccessible::Heading);
    driver.check(driver.wire().requests(isCall(u"tree"_s)).size() == 1,
        u"the region tree was asked for once"_s);
    driver.see(u"北京"_s, QAccessible::ListItem);
    driver.hand().press(Qt::Key_End);
    driver.see(u"新疆"_s, QAccessible::ListItem);
    driver.hand().press(Qt::Key_Right);
    driver.hand().press(Qt::Key_End);
    driver.see(u"吐鲁番"_s, QAccessible::ListItem);
    driver.seeToast(u"您所选的地区没入驻学校，请确认选择的地区是否错误?"_s,
        [&] { driver.tap(Texts::confirm, QAccessible::Button); });
    driver.see(u"新疆-吐鲁番"_s);
    driver.see(Texts::chooseSchool);
}

void cityByTouch(Driver &driver)
{
    driver.seeNoToast();
    driver.tap(u"新疆"_s);
    driver.see(u"乌鲁木齐"_s, QAccessible::ListItem);
    driver.hand().press(Qt::Key_Home);
    for (const QString &place : {u"上海"_s, u"福建"_s, u"福州"_s, u"厦门"_s})
        turnTo(driver, place);
    driver.tap(Texts::confirm, QAccessible::Button);
    driver.see(chosenCity);
    driver.seeNothingOf(pickerTitle, QAccessible::Dialog);
}

void schoolByTouch(Driver &driver)
{
    driver.seeToast(u"请先选择学校"_s, [&] { driver.tap(accountField); });
    driver.seeNoToast();
    driver.tap(Texts::chooseSchool);
    driver.see(Texts::chooseSchool, QAccessible::Heading);
    turnTo(driver, Account::school);
    driver.tap(Texts::confirm, QAccessible::Button);
    driver.see(Account::school, QAccessible::Button);
    driver.seeNothingOf(Texts::chooseSchool, QAccessible::Dialog);
}

void activationRefused(Driver &driver)
{
    driver.tap(activation, QAccessible::Button);
    driver.see(u"账号启用设置"_s, QAccessible::Heading);
    driver.enter(numberField, userNo);
    driver.enter(cardField, cardNo.chopped(1));
    driver.seeToast(u"请输入正确证件号码"_s, [&] { driver.tap(u"激活"_s, QAccessible::Button); });
}

void activationVerified(Driver &driver)
{
    driver.wire().mark();
    driver.enter(cardField, cardNo);
    driver.seeToast(u"激活成功"_s, [&] { driver.tap(u"激活"_s, QAccessible::Button); });
    driver.see(u"您好，%1同学"_s.arg(userName), QAccessible::Heading);
    driver.seeAll({u"验证成功"_s, numberField});
    const auto calls = driver.wire().requests(isCall(u"verifyAccount"_s));
    driver.check(calls.size() == 1 && calls[0].value(u"user_no"_s) == userNo
            && calls[0].value(u"card_no"_s) == cardNo,
        u"number and card were sent"_s);
}

void activationSet(Driver &driver)
{
    driver.seeNoToast();
    driver.enter(u"请设置登录账号"_s, userCode);
    driver.enter(u"请设置密码，不小于6位"_s, password);
    driver.enter(u"请再次输入密码"_s, password);
    driver.photograph();
    driver.tap(Texts::confirm, QAccessible::Button);
    driver.see(u"设置成功"_s, QAccessible::AlertMessage);
    driver.see(activation, QAccessible::Button);
    driver.see(chosenCity);
}

void signInWithNewAccount(Driver &driver)
{
    driver.seeNoToast();
    driver.enter(accountField, userCode);
    driver.enter(Texts::passwordField, password);
    SignIn::acceptAgreement(driver);
    driver.photograph();
    driver.tap(Texts::loginButton, QAccessible::Button);
    driver.seePage(u"/portal/index.html"_s, u"#greeting"_s);
    driver.seeInPage(u"#greeting"_s, userName);
}

}

QList<Step> accountSteps()
{
    const QString screen = u"older-login-screen"_s;
    const QString nowhere = u"city-without-school"_s;
    const QString city = u"city-picked"_s;
    const QString school = u"school-picked"_s;
    const QString refused = u"activation-refused"_s;
    const QString verified = u"activation-verified"_s;
    const QString set = u"activation-set"_s;
    return {
        {screen, {u"expired-token"_s}, Lives::accounts, olderScreen, {}, chooseOlderScreen},
        {u"city-needs-province"_s, {screen}, Lives::accounts, cityNeedsProvince},
        {nowhere, {screen}, Lives::accounts, cityWithoutSchool},
        {city, {nowhere}, Lives::accounts, cityByTouch},
        {school, {city}, Lives::accounts, schoolByTouch},
        {refused, {school}, Lives::accounts, activationRefused},
        {verified, {refused}, Lives::accounts, activationVerified},
        {set, {verified}, Lives::accounts, activationSet},
        {u"sign-in-with-new-account"_s, {set}, Lives::accounts, signInWithNewAccount},
    };
}
