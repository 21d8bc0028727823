#include "e2e/Steps.h"

#include "e2e/Driver.h"
#include "e2e/SignIn.h"
#include "e2e/Texts.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int firstLife = 1;

void backToPortal(Driver &driver)
{
    driver.wire().mark();
    driver.page().tap(u"header a"_s);
    SignIn::seePortal(driver);
    const auto pages = driver.wire().requests(isPath(u"/portal/index.html"_s));
    driver.check(
        !pages.isEmpty() && hasCookie(pages[0], u"mo"_s) && !hasCookie(pages[0], u"rblgin"_s),
        u"a page that a link leads to is asked for with the session and without the marker"_s);
}

void openLinks(Driver &driver)
{
    driver.page().tap(u"a[href=\"/portal/links.html\"]"_s);
    driver.seePage(u"/portal/links.html"_s, u"#link-blank"_s);
}

void blankLink(Driver &driver)
{
    openLinks(driver);
    driver.page().tap(u"#link-blank"_s);
    driver.seePage(u"/portal/plain.html?from=blank"_s, u"#address"_s);
    driver.note(u"a link that asks for a new window opened %1 in the same view"_s.arg(
        driver.page().path()));
    driver.photograph();
    backToPortal(driver);
}

// The server hangs up in the middle of the answer.
void errorView(Driver &driver)
{
    openLinks(driver);
    driver.wire().spoil({{u"path"_s, u"/portal/plain.html"_s}, {u"cut"_s, true}});
    driver.page().tap(u"#link-plain"_s);
    driver.see(u"页面加载失败，请检查网络后重试"_s);
    driver.see(u"重新加载"_s, QAccessible::Button);
    driver.photograph();
    driver.tap(u"重新加载"_s, QAccessible::Button);
    driver.seePage(u"/portal/plain.html"_s, u"#address"_s);
    driver.seeNothingOf(u"重新加载"_s, QAccessible::Button);
    driver.note(u"the retry brought the page"_s);
    backToPortal(driver);
}

}

QList<Step> portalSteps()
{
    const QStringList signedIn {u"sign-in"_s};
    return {
        {u"blank-link"_s, signedIn, firstLife, blankLink},
        {u"error-view"_s, signedIn, firstLife, errorView},
    };
}
