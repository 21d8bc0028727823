#include "e2e/steps/Steps.h"

#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int transcodingMs = 60'000;
const QString upload = u"#btn-slicingUpload"_s;
const QString outcome = u"#out-onSlicingUpload"_s;

bool isPart(const TracedRequest &request)
{
    return request.method == u"PUT";
}

Wire::Matches isServiceCall(const QString &path)
{
    return [path](const TracedRequest &request) { return request.path == u"/file/"_s + path; };
}

void openUploadPage(Driver &driver)
{
    driver.page().tap(u"a[href=\"/portal/upload.html\"]"_s);
    driver.seePage(u"/portal/upload.html"_s, upload);
    driver.seeInPage(u"#connection"_s, u"已连接"_s);
}

void openPicker(Driver &driver, const QString &choice)
{
    driver.wire().mark();
    driver.page().tap(upload);
    driver.tap(choice);
}

void waitForFiles(Driver &driver, int count, int shown)
{
    const QString wanted = u"本次收到 %1 个文件"_s.arg(count);
    const QString all = u"共 %1 个文件"_s.arg(shown);
    const auto says = [&](const QString &selector, const QString &text) {
        const auto element = driver.page().find(selector);
        return element && element->text == text;
    };
    driver.waitFor(
        wanted, [&] { return says(outcome, wanted) && says(u"#count"_s, all); }, transcodingMs);
    driver.seeNoToast();
}

// The newest stands first: the PNG, then the HEIC.
void pickPhotos(Driver &driver)
{
    openUploadPage(driver);
    openPicker(driver, u"拍照/相册"_s);
    driver.see(u"选择照片 2"_s);
    driver.tap(u"选择照片 2"_s);
    driver.tap(u"选择照片 1"_s);
    driver.see(u"完成(2)"_s, QAccessible::Button);
    driver.photograph();
}

void uploadPhotos(Driver &driver)
{
    driver.tap(u"完成(2)"_s, QAccessible::Button);
    waitForFiles(driver, 2, 2);
    const auto checks = driver.wire().requests(isServiceCall(u"check"_s));
    driver.check(checks.size() == 2 && checks[0].value(u"ext"_s) == u"jpeg"
            && checks[1].value(u"ext"_s) == u"png",
        u"the photos went up as jpeg and png, in the order of choosing"_s);
    driver.check(
        driver.wire().requests(isServiceCall(u"complete"_s)).size() == 2, u"both were joined"_s);
}

void pickVideo(Driver &driver)
{
    openPicker(driver, u"录像/视频"_s);
    driver.see(u"选择视频 1"_s);
    driver.tap(u"选择视频 1"_s);
    driver.see(u"完成(1)"_s, QAccessible::Button);
    driver.photograph();
}

void uploadVideo(Driver &driver)
{
    driver.seeToast(u"上传中..."_s, [&] { driver.tap(u"完成(1)"_s, QAccessible::Button); });
    waitForFiles(driver, 1, 3);
    const auto parts = driver.wire().requests(isPart);
    driver.check(parts.size() > 1, u"it went up in %1 parts"_s.arg(parts.size()));
    const auto checks = driver.wire().requests(isServiceCall(u"check"_s));
    driver.check(checks.size() == 1 && checks[0].value(u"ext"_s) == u"mp4", u"as mp4"_s);
    driver.note(u"%1 parts"_s.arg(parts.size()));
}

void uploadVideoAgain(Driver &driver)
{
    pickVideo(driver);
    driver.tap(u"完成(1)"_s, QAccessible::Button);
    waitForFiles(driver, 1, 4);
    driver.check(driver.wire().requests(isPart).isEmpty(), u"no part is sent twice"_s);
    driver.page().bringIntoView(u"#files .file:last-child .tag"_s);
    driver.seeInPage(u"#files .file:last-child .tag"_s, u"秒传"_s);
    driver.photograph();
    driver.page().tap(u"header a"_s);
    SignIn::seePortal(driver);
}

}

QList<Step> uploadSteps()
{
    return {
        {u"pick-photos"_s, {u"sign-in"_s}, Lives::signIn, pickPhotos},
        {u"upload-photos"_s, {u"pick-photos"_s}, Lives::signIn, uploadPhotos},
        {u"pick-video"_s, {u"upload-photos"_s}, Lives::signIn, pickVideo},
        {u"upload-video"_s, {u"pick-video"_s}, Lives::signIn, uploadVideo},
        {u"upload-again"_s, {u"upload-video"_s}, Lives::signIn, uploadVideoAgain},
    };
}
