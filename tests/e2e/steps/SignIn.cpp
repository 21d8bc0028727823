#include "e2e/steps/SignIn.h"

#include "e2e/steps/Account.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/Texts.h"

using namespace Qt::StringLiterals;

void SignIn::seeLoginScreen(Driver &driver, const QString &school)
{
    driver.seeAll({school, Texts::accountField, Texts::passwordField, Texts::loginButton});
}

void SignIn::acceptAgreement(Driver &driver)
{
    const auto box
        = [&] { return driver.screen().find(Texts::agreementBox, QAccessible::CheckBox); };
    driver.see(Texts::agreementBox, QAccessible::CheckBox);
    if (!box()->checked)
        driver.tap(Texts::agreementBox, QAccessible::CheckBox);
    driver.waitFor(u"the agreement's box to be checked"_s, [&] { return box() && box()->checked; });
}

void SignIn::tryWith(Driver &driver, const QString &userCode, const QString &password)
{
    driver.enter(Texts::accountField, userCode);
    driver.enter(Texts::passwordField, password);
    acceptAgreement(driver);
    driver.tap(Texts::loginButton, QAccessible::Button);
}

void SignIn::seePortal(Driver &driver)
{
    driver.seePage(u"/portal/index.html"_s, u"#greeting"_s);
    driver.seeInPage(u"#greeting"_s, Account::userName);
    driver.seeNothingOf(Texts::loginButton, QAccessible::Button);
}
