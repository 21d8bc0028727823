#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

void backToPortal(Driver &driver)
{
    driver.wire().mark();
    driver.page().tap(u"header a"_s);
    SignIn::seePortal(driver);
    const TracedRequest page = driver.firstRequestFor(u"/portal/index.html"_s);
    driver.check(hasCookie(page, u"mo"_s) && !hasCookie(page, u"rblgin"_s),
        u"a page that a link leads to is asked for with the session and without the marker"_s);
}

void openLinks(Driver &driver)
{
    driver.page().tap(u"a[href=\"/portal/links.html\"]"_s);
    driver.seePage(u"/portal/links.html"_s, u"#link-blank"_s);
}

}

void portalSteps(Journey &journey)
{
    const QString signedIn = u"sign-in"_s;
    // It asks for a new window and gets the same view.
    journey.step(u"blank-link"_s, signedIn, [](Driver &driver) {
        openLinks(driver);
        driver.page().tap(u"#link-blank"_s);
        driver.seePage(u"/portal/plain.html?from=blank"_s, u"#address"_s);
        driver.photograph();
        backToPortal(driver);
    });

    journey.step(u"page-dialogs"_s, signedIn, [](Driver &driver) {
        openLinks(driver);
        // No script runs while the page asks.
        const QString host = driver.page().read(u"location.host"_s).toString();
        const QStringList answers[] {{u"#btn-alert"_s, Texts::confirm, u"提示已关闭"_s},
            {u"#btn-confirm"_s, Texts::cancel, u"已取消"_s},
            {u"#btn-confirm"_s, Texts::confirm, u"已确认"_s}};
        for (const QStringList &answer : answers) {
            driver.page().tap(answer[0]);
            driver.see(host, Heading);
            driver.answer(answer[1], host);
            driver.seeInPage(u"#out-dialog"_s, answer[2]);
        }
    });

    journey.step(u"download"_s, u"page-dialogs"_s, [](Driver &driver) {
        const QString name = u"校园海报.png"_s;
        driver.page().tap(u"#link-download"_s);
        driver.see(u"下载文件"_s, Heading);
        driver.seeToast(u"已下载：%1"_s.arg(name), Texts::confirm);
        const QFileInfo file(driver.profile() + u"/Downloads/"_s + name);
        driver.check(file.size() > 0, u"%1 is kept"_s.arg(file.filePath()));
        backToPortal(driver);
    });

    // The server hangs up in the middle of the answer.
    journey.step(u"error-view"_s, signedIn, [](Driver &driver) {
        openLinks(driver);
        driver.wire().spoil({{u"path"_s, u"/portal/plain.html"_s}, {u"cut"_s, true}});
        driver.page().tap(u"#link-plain"_s);
        driver.see(u"页面加载失败，请检查网络后重试"_s);
        driver.answer(u"重新加载"_s, u"重新加载"_s);
        driver.seePage(u"/portal/plain.html"_s, u"#address"_s);
        backToPortal(driver);
    });
}
