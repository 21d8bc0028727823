#include "e2e/steps/Steps.h"

#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

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

void answer(Driver &driver, const QString &question, const QString &button, const QString &result)
{
    // No script runs while the page asks.
    const QString host = driver.page().read(u"location.host"_s).toString();
    driver.page().tap(question);
    driver.see(host, QAccessible::Heading);
    driver.see(button, QAccessible::Button);
    driver.photograph();
    driver.tap(button, QAccessible::Button);
    driver.seeInPage(u"#out-dialog"_s, result);
    driver.seeNothingOf(button, QAccessible::Button);
}

void pageDialogs(Driver &driver)
{
    openLinks(driver);
    answer(driver, u"#btn-alert"_s, u"确定"_s, u"提示已关闭"_s);
    answer(driver, u"#btn-confirm"_s, Texts::cancel, u"已取消"_s);
    answer(driver, u"#btn-confirm"_s, u"确定"_s, u"已确认"_s);
    driver.note(u"the page heard each answer"_s);
}

void download(Driver &driver)
{
    const QString name = u"校园海报.png"_s;
    const QString confirm = u"确定"_s;
    driver.page().tap(u"#link-download"_s);
    driver.see(u"下载文件"_s, QAccessible::Heading);
    driver.seeToast(u"已下载：%1"_s.arg(name), [&] { driver.tap(confirm, QAccessible::Button); });
    const QFileInfo file(driver.profile() + u"/Downloads/"_s + name);
    driver.check(file.size() > 0, u"%1 is kept"_s.arg(file.filePath()));
    backToPortal(driver);
}

}

QList<Step> portalSteps()
{
    const QStringList signedIn {u"sign-in"_s};
    return {
        {u"blank-link"_s, signedIn, Lives::signIn, blankLink},
        {u"page-dialogs"_s, signedIn, Lives::signIn, pageDialogs},
        {u"download"_s, {u"page-dialogs"_s}, Lives::signIn, download},
        {u"error-view"_s, signedIn, Lives::signIn, errorView},
    };
}
