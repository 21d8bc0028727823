#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"

#include <QColor>
#include <QDir>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb defaultStatusColor = 0x3dd187;
constexpr QRgb firstPressedColor = 0x278bea;
constexpr int shortRestMs = 1'000;
const QString saveImageAction = QStringLiteral("保存图片");

bool restOnPhoto(Driver &driver, int timeoutMs = Driver::patienceMs)
{
    return driver.hand().rest(
        driver.page().bringIntoView(u"#photo"_s),
        [&] { return driver.screen().shows(saveImageAction); }, timeoutMs);
}

QFileInfoList savedPictures(const Driver &driver)
{
    return QDir(driver.profile() + u"/Pictures"_s).entryInfoList({u"IMG_*"_s}, QDir::Files);
}

void detectOnline(Driver &driver)
{
    driver.check(BridgePage::answerTo(driver, u"detectOnline"_s, u"number"_s) == 1,
        u"the device is online"_s);
}

}

void bridgeSteps(Journey &journey)
{
    journey.step(BridgePage::step, u"sign-in"_s, BridgePage::open);
    journey.step(u"bridge-detectOnline"_s, BridgePage::step, detectOnline);

    journey.step(u"bridge-getRequestUrl"_s, BridgePage::step, [](Driver &driver) {
        const QJsonValue url = BridgePage::answerTo(driver, u"getRequestUrl"_s, u"string"_s);
        const QString origin = driver.page().read(u"location.origin"_s).toString();
        driver.check(url == origin + u'/' + Pupil::siteCode, u"the answer is the site's address"_s);
    });

    journey.step(u"bridge-getAppInfo"_s, BridgePage::step, [](Driver &driver) {
        const QJsonValue text = BridgePage::answerTo(driver, u"getAppInfo"_s, u"string"_s);
        const QJsonObject info = QJsonDocument::fromJson(text.toString().toUtf8()).object();
        driver.check(info.size() == 12 && info[u"site_id"] == Pupil::siteId
                && !info[u"client_code"].toString().isEmpty() && info[u"app_type"] == 1,
            u"%1 describes this client"_s.arg(text.toString()));
    });

    journey.step(u"bridge-changeStatusColor"_s, BridgePage::step, [](Driver &driver) {
        driver.seeStatusStrip(defaultStatusColor);
        BridgePage::press(driver, u"changeStatusColor"_s);
        driver.seeStatusStrip(firstPressedColor);
    });

    journey.step(u"bridge-slicingUpload"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"slicingUpload"_s);
        driver.seeAll({u"请选择上传方式"_s, u"拍照/相册"_s, u"录像/视频"_s});
        driver.answer(Texts::cancel, u"拍照/相册"_s);
    });

    journey.step(u"bridge-setLongClickSaveImg"_s, BridgePage::step, [](Driver &driver) {
        driver.check(!restOnPhoto(driver, shortRestMs), u"a long press offers nothing at first"_s);
        BridgePage::press(driver, u"setLongClickSaveImg"_s);
        driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
        driver.see(saveImageAction, Button);
        driver.answer(Texts::cancel, saveImageAction);
    });

    journey.step(u"save-image"_s, u"bridge-setLongClickSaveImg"_s, [](Driver &driver) {
        const auto before = savedPictures(driver).size();
        driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
        driver.seeToast(u"保存成功"_s, saveImageAction);
        const QFileInfoList saved = savedPictures(driver);
        driver.check(saved.size() == before + 1
                && std::all_of(saved.begin(), saved.end(),
                    [](const QFileInfo &file) { return !QImage(file.filePath()).isNull(); }),
            u"one picture more is in the album and can be read"_s);
    });

    journey.step(u"bridge-quickLoginApp"_s, BridgePage::step, [](Driver &driver) {
        driver.wire().mark();
        BridgePage::press(driver, u"quickLoginApp"_s);
        driver.seePage(u"/portal/plain.html?title="_s, u"#title"_s);
        driver.seeInPage(u"#title"_s, u"快捷登录"_s);
        driver.check(!driver.seeCall(u"login4H5"_s).value(u"login_token"_s).isEmpty(),
            u"the sign-in was by token"_s);
        driver.photograph();
        BridgePage::comeBack(driver);
    });

    // The earlier ways in which pages reach the client.
    for (const QString &way : {u"old"_s, u"event"_s}) {
        journey.step(u"bridge-%1-page"_s.arg(way), BridgePage::step, [way](Driver &driver) {
            const QString path = u"/portal/bridge-%1.html"_s.arg(way);
            driver.page().tap(u"a[href=\"%1\"]"_s.arg(path));
            driver.seePage(path, u"#connection"_s);
            driver.seeInPage(u"#connection"_s, u"已连接"_s);
            detectOnline(driver);
            driver.photograph();
            BridgePage::comeBack(driver);
        });
    }
}
