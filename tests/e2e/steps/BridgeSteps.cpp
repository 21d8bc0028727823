#include "e2e/steps/Steps.h"

#include "e2e/steps/Account.h"
#include "e2e/steps/BridgePage.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/SignIn.h"
#include "e2e/steps/Texts.h"

#include <QColor>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb defaultStatusColor = 0x3dd187;
constexpr QRgb firstPressedColor = 0x278bea;
constexpr int shortRestMs = 1'000;
const QString saveImageAction = QStringLiteral("保存图片");

void detectOnline(Driver &driver)
{
    driver.check(BridgePage::answerTo(driver, u"detectOnline"_s, u"number"_s)[u"result"] == 1,
        u"the device is online"_s);
}

void getRequestUrl(Driver &driver)
{
    const QString url
        = BridgePage::answerTo(driver, u"getRequestUrl"_s, u"string"_s)[u"result"].toString();
    const QString origin = driver.page().read(u"location.origin"_s).toString();
    driver.check(url == origin + u'/' + Account::siteCode, u"%1 is the site's address"_s.arg(url));
}

void getAppInfo(Driver &driver)
{
    const QString text
        = BridgePage::answerTo(driver, u"getAppInfo"_s, u"string"_s)[u"result"].toString();
    const QJsonObject info = QJsonDocument::fromJson(text.toUtf8()).object();
    driver.check(info.size() == 12 && info[u"site_id"] == Account::siteId
            && !info[u"client_code"].toString().isEmpty() && info[u"app_type"] == 1,
        u"%1 describes this client"_s.arg(text));
}

void changeStatusColor(Driver &driver)
{
    driver.check(driver.statusStrip() == QColor(defaultStatusColor), u"the strip begins green"_s);
    BridgePage::press(driver, u"changeStatusColor"_s);
    driver.waitFor(u"the strip to become blue"_s,
        [&] { return driver.statusStrip() == QColor(firstPressedColor); });
    driver.note(u"the strip is %1"_s.arg(driver.statusStrip().name()));
}

bool restOnPhoto(Driver &driver, int timeoutMs = Driver::patienceMs)
{
    return driver.hand().rest(
        driver.page().bringIntoView(u"#photo"_s),
        [&] { return driver.screen().shows(saveImageAction); }, timeoutMs);
}

void setLongClickSaveImg(Driver &driver)
{
    driver.check(!restOnPhoto(driver, shortRestMs), u"a long press offers nothing at first"_s);
    BridgePage::press(driver, u"setLongClickSaveImg"_s);
    driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
    driver.see(saveImageAction, QAccessible::Button);
    driver.photograph();
    driver.tap(Texts::cancel, QAccessible::Button);
    driver.seeNothingOf(saveImageAction);
}

QFileInfoList savedPictures(const Driver &driver)
{
    return QDir(driver.profile() + u"/Pictures"_s).entryInfoList({u"IMG_*"_s}, QDir::Files);
}

void saveImage(Driver &driver)
{
    const int before = savedPictures(driver).size();
    driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
    driver.seeToast(u"保存成功"_s, [&] { driver.tap(saveImageAction, QAccessible::Button); });
    const QFileInfoList saved = savedPictures(driver);
    driver.check(saved.size() == before + 1
            && std::all_of(saved.begin(), saved.end(),
                [](const QFileInfo &file) { return !QImage(file.filePath()).isNull(); }),
        u"one picture more is in the album and can be read"_s);
}

void slicingUpload(Driver &driver)
{
    const QString photo = u"拍照/相册"_s;
    BridgePage::press(driver, u"slicingUpload"_s);
    driver.seeAll({u"请选择上传方式"_s, photo, u"录像/视频"_s, Texts::cancel});
    driver.photograph();
    driver.tap(Texts::cancel, QAccessible::Button);
    driver.seeNothingOf(photo);
    driver.note(u"the sheet offers photo, video and cancel"_s);
}

void quickLogin(Driver &driver)
{
    driver.wire().mark();
    BridgePage::press(driver, u"quickLoginApp"_s);
    driver.seePage(u"/portal/plain.html?title="_s, u"#title"_s);
    driver.seeInPage(u"#title"_s, u"快捷登录"_s);
    const auto calls = driver.wire().requests(isCall(u"login4H5"_s));
    driver.check(calls.size() == 1 && !calls[0].value(u"login_token"_s).isEmpty(),
        u"one sign-in by token came before"_s);
    driver.photograph();
    BridgePage::comeBack(driver);
}

// The earlier ways in which pages reach the client.
Step otherConnection(const QString &name, const QString &path)
{
    return {name, {BridgePage::step}, Lives::signIn, [path](Driver &driver) {
                driver.page().tap(u"a[href=\"%1\"]"_s.arg(path));
                driver.seePage(path, u"#connection"_s);
                driver.seeInPage(u"#connection"_s, u"已连接"_s);
                detectOnline(driver);
                driver.photograph();
                BridgePage::comeBack(driver);
            }};
}

}

QList<Step> bridgeSteps()
{
    const QString longPress = u"setLongClickSaveImg"_s;
    return {
        {BridgePage::step, {u"sign-in"_s}, Lives::signIn, BridgePage::open},
        BridgePage::handler(u"detectOnline"_s, detectOnline),
        BridgePage::handler(u"getRequestUrl"_s, getRequestUrl),
        BridgePage::handler(u"getAppInfo"_s, getAppInfo),
        BridgePage::handler(u"changeStatusColor"_s, changeStatusColor),
        BridgePage::handler(u"slicingUpload"_s, slicingUpload),
        BridgePage::handler(longPress, setLongClickSaveImg),
        {u"save-image"_s, {u"bridge-"_s + longPress}, Lives::signIn, saveImage},
        BridgePage::handler(u"quickLoginApp"_s, quickLogin),
        otherConnection(u"bridge-old-page"_s, u"/portal/bridge-old.html"_s),
        otherConnection(u"bridge-event-page"_s, u"/portal/bridge-event.html"_s),
    };
}
