#include "e2e/Steps.h"

#include "e2e/Account.h"
#include "e2e/Driver.h"
#include "e2e/SignIn.h"
#include "e2e/Texts.h"

#include <QColor>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

constexpr int firstLife = 1;
constexpr QRgb defaultStatusColor = 0x3dd187;
constexpr QRgb firstPressedColor = 0x278bea;
constexpr int shortRestMs = 1'000;
const QString bridgePage = QStringLiteral("bridge-page");
const QString saveImageAction = QStringLiteral("保存图片");

QString outputOf(const QString &handler)
{
    return u"#out-"_s + handler;
}

void press(Driver &driver, const QString &handler)
{
    driver.page().tap(u"#btn-"_s + handler);
}

void openBridgePage(Driver &driver)
{
    driver.page().tap(u"#link-bridge"_s);
    driver.seePage(u"/portal/bridge.html"_s, u"#connection"_s);
    driver.seeInPage(u"#connection"_s, u"已连接"_s);
}

void backToBridgePage(Driver &driver)
{
    driver.page().tap(u"header a"_s);
    SignIn::seePortal(driver);
    openBridgePage(driver);
}

QJsonObject answerTo(Driver &driver, const QString &handler, const QString &type)
{
    press(driver, handler);
    driver.seeInPage(outputOf(handler), u"[result: %1]"_s.arg(type));
    const QString shown
        = driver.page().find(outputOf(handler)).value_or(WebContent::Element()).text;
    return QJsonDocument::fromJson(shown.left(shown.lastIndexOf(u" [")).toUtf8()).object();
}

void detectOnline(Driver &driver)
{
    driver.check(answerTo(driver, u"detectOnline"_s, u"number"_s)[u"result"] == 1,
        u"the device is online"_s);
}

void getRequestUrl(Driver &driver)
{
    const QString url = answerTo(driver, u"getRequestUrl"_s, u"string"_s)[u"result"].toString();
    const QString origin = driver.page().read(u"location.origin"_s).toString();
    driver.check(url == origin + u'/' + Account::siteCode, u"%1 is the site's address"_s.arg(url));
}

void getAppInfo(Driver &driver)
{
    const QString text = answerTo(driver, u"getAppInfo"_s, u"string"_s)[u"result"].toString();
    const QJsonObject info = QJsonDocument::fromJson(text.toUtf8()).object();
    driver.check(info.size() == 12 && info[u"site_id"] == Account::siteId
            && !info[u"client_code"].toString().isEmpty() && info[u"app_type"] == 1,
        u"%1 describes this client"_s.arg(text));
}

QColor statusStrip(const Driver &driver)
{
    // Away from what a page shows: the strip's own corner.
    return Picture::of(driver.window()).colorAt(QPointF(4, 4));
}

void changeStatusColor(Driver &driver)
{
    driver.check(statusStrip(driver) == QColor(defaultStatusColor), u"the strip begins green"_s);
    press(driver, u"changeStatusColor"_s);
    driver.waitFor(u"the strip to become blue"_s,
        [&] { return statusStrip(driver) == QColor(firstPressedColor); });
    driver.note(u"the strip is %1"_s.arg(statusStrip(driver).name()));
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
    press(driver, u"setLongClickSaveImg"_s);
    driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
    driver.see(saveImageAction, QAccessible::Button);
    driver.photograph();
    driver.tap(Texts::cancel, QAccessible::Button);
    driver.seeNothingOf(saveImageAction);
}

void saveImage(Driver &driver)
{
    driver.check(restOnPhoto(driver), u"a long press on the picture offers to save it"_s);
    driver.seeToast(u"保存成功"_s, [&] { driver.tap(saveImageAction, QAccessible::Button); });
    const QDir album(driver.profile() + u"/Pictures"_s);
    const QStringList saved = album.entryList({u"IMG_*"_s}, QDir::Files);
    driver.check(saved.size() == 1 && !QImage(album.filePath(saved[0])).isNull(),
        u"one picture is in the album (%1) and can be read"_s.arg(saved.join(u' ')));
    driver.note(saved[0]);
}

void slicingUpload(Driver &driver)
{
    const QString photo = u"拍照/相册"_s;
    press(driver, u"slicingUpload"_s);
    driver.seeAll({u"请选择上传方式"_s, photo, u"录像/视频"_s, Texts::cancel});
    driver.photograph();
    driver.tap(Texts::cancel, QAccessible::Button);
    driver.seeNothingOf(photo);
    driver.note(u"the sheet offers photo, video and cancel"_s);
}

void quickLogin(Driver &driver)
{
    driver.wire().mark();
    press(driver, u"quickLoginApp"_s);
    driver.seePage(u"/portal/plain.html?title="_s, u"#title"_s);
    driver.seeInPage(u"#title"_s, u"快捷登录"_s);
    const auto calls = driver.wire().requests(isCall(u"login4H5"_s));
    driver.check(calls.size() == 1 && !calls[0].value(u"login_token"_s).isEmpty(),
        u"one sign-in by token came before"_s);
    driver.photograph();
    backToBridgePage(driver);
}

// The earlier ways in which pages reach the client.
Step otherConnection(const QString &name, const QString &path)
{
    return {name, {bridgePage}, firstLife, [path](Driver &driver) {
                driver.page().tap(u"a[href=\"%1\"]"_s.arg(path));
                driver.seePage(path, u"#connection"_s);
                driver.seeInPage(u"#connection"_s, u"已连接"_s);
                detectOnline(driver);
                driver.photograph();
                backToBridgePage(driver);
            }};
}

Step handler(const QString &name, void (*act)(Driver &))
{
    return {u"bridge-"_s + name, {bridgePage}, firstLife, act};
}

// Handlers whose service has no implementation yet say so.
Step unavailable(const QString &name, const QString &service)
{
    return {u"bridge-"_s + name, {bridgePage}, firstLife, [name, service](Driver &driver) {
                driver.seeToast(service + u"功能暂不可用"_s, [&] { press(driver, name); });
            }};
}

}

QList<Step> bridgeSteps()
{
    const QString longPress = u"setLongClickSaveImg"_s;
    return {
        {bridgePage, {u"sign-in"_s}, firstLife, openBridgePage},
        handler(u"detectOnline"_s, detectOnline),
        handler(u"getRequestUrl"_s, getRequestUrl),
        handler(u"getAppInfo"_s, getAppInfo),
        handler(u"changeStatusColor"_s, changeStatusColor),
        unavailable(u"scanQrCode"_s, u"扫一扫"_s),
        unavailable(u"getBDLocation"_s, u"定位"_s),
        unavailable(u"getWechatAuthCode"_s, u"微信授权"_s),
        unavailable(u"share"_s, u"分享"_s),
        handler(u"slicingUpload"_s, slicingUpload),
        unavailable(u"linkShare"_s, u"分享"_s),
        unavailable(u"jump2OutlinkPage"_s, u"外部页面"_s),
        unavailable(u"jump2OutlinkLandscapePage"_s, u"横屏页面"_s),
        handler(longPress, setLongClickSaveImg),
        {u"save-image"_s, {u"bridge-"_s + longPress}, firstLife, saveImage},
        handler(u"quickLoginApp"_s, quickLogin),
        otherConnection(u"bridge-old-page"_s, u"/portal/bridge-old.html"_s),
        otherConnection(u"bridge-event-page"_s, u"/portal/bridge-event.html"_s),
    };
}
