#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int transcodingMs = 60'000;
const QString upload = QStringLiteral("#btn-slicingUpload");

// Opens the picker for what the sheet offers, and picks these in their order.
void pick(Driver &driver, const QString &kind, const QStringList &things)
{
    driver.wire().mark();
    driver.page().tap(upload);
    driver.tap(kind);
    for (const QString &thing : things)
        driver.tap(thing);
    driver.see(u"完成(%1)"_s.arg(things.size()), Button);
    driver.photograph();
}

void pickVideo(Driver &driver)
{
    pick(driver, u"录像/视频"_s, {u"选择视频 1"_s});
}

void waitForFiles(Driver &driver, int count, int shown)
{
    const auto says = [&](const QString &selector, const QString &text) {
        const auto element = driver.page().find(selector);
        return element && element->text == text;
    };
    const QString wanted = u"本次收到 %1 个文件"_s.arg(count);
    driver.waitFor(
        wanted,
        [&] {
            return says(u"#out-onSlicingUpload"_s, wanted)
                && says(u"#count"_s, u"共 %1 个文件"_s.arg(shown));
        },
        transcodingMs);
    driver.seeNoToast();
}

// The types of the files that the service was asked about.
QStringList typesSent(Driver &driver)
{
    QStringList types;
    for (const TracedRequest &check : driver.wire().requests(isPath(u"/file/check"_s)))
        types << check.value(u"ext"_s);
    return types;
}

qsizetype partsSent(Driver &driver)
{
    return driver.wire()
        .requests([](const TracedRequest &request) { return request.method == u"PUT"; })
        .size();
}

}

void uploadSteps(Journey &journey)
{
    // The newest stands first: the PNG, then the HEIC.
    journey.step(u"pick-photos"_s, u"sign-in"_s, [](Driver &driver) {
        driver.page().tap(u"a[href=\"/portal/upload.html\"]"_s);
        driver.seePage(u"/portal/upload.html"_s, upload);
        driver.seeInPage(u"#connection"_s, u"已连接"_s);
        pick(driver, u"拍照/相册"_s, {u"选择照片 2"_s, u"选择照片 1"_s});
    });

    journey.step(u"upload-photos"_s, u"pick-photos"_s, [](Driver &driver) {
        driver.tap(u"完成(2)"_s, Button);
        waitForFiles(driver, 2, 2);
        driver.check(typesSent(driver) == QStringList {u"jpeg"_s, u"png"_s},
            u"the photos went up as jpeg and png, in the order of choosing"_s);
        driver.check(
            driver.wire().requests(isPath(u"/file/complete"_s)).size() == 2, u"both were joined"_s);
    });

    journey.step(u"pick-video"_s, u"upload-photos"_s, pickVideo);

    journey.step(u"upload-video"_s, u"pick-video"_s, [](Driver &driver) {
        driver.seeToast(u"上传中..."_s, u"完成(1)"_s);
        waitForFiles(driver, 1, 3);
        driver.check(partsSent(driver) > 1, u"it went up in parts"_s);
        driver.check(typesSent(driver) == QStringList {u"mp4"_s}, u"as mp4"_s);
        driver.note(u"%1 parts"_s.arg(partsSent(driver)));
    });

    journey.step(u"upload-again"_s, u"upload-video"_s, [](Driver &driver) {
        pickVideo(driver);
        driver.tap(u"完成(1)"_s, Button);
        waitForFiles(driver, 1, 4);
        driver.check(partsSent(driver) == 0, u"no part is sent twice"_s);
        driver.page().bringIntoView(u"#files .file:last-child .tag"_s);
        driver.seeInPage(u"#files .file:last-child .tag"_s, u"秒传"_s);
        driver.photograph();
        driver.page().tap(u"header a"_s);
        SignIn::seePortal(driver);
    });
}
