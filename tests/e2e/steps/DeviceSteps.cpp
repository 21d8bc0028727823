#include "e2e/steps/Steps.h"

#include "e2e/steps/BridgePage.h"
#include "e2e/driver/Driver.h"
#include "e2e/steps/Texts.h"
#include "e2e/steps/WeChatPage.h"
#include "services/SampleCodes.h"

#include <QColor>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString scanPrompt = QStringLiteral("将二维码/条码放入框内, 即可自动扫描");
const QString plainPage = QStringLiteral("/portal/plain.html?from=push");

// There is nothing to read before the camera yet.
void scanner(Driver &driver)
{
    BridgePage::press(driver, u"scanQrCode"_s);
    driver.see(scanPrompt);
    driver.photograph();
}

void scanFromAlbum(Driver &driver)
{
    const QString code = u"2026-0301"_s;
    SampleCodes::qr(code).save(driver.profile() + u"/Pictures/码.png"_s);
    driver.tap(u"相册"_s, QAccessible::Button);
    driver.tap(u"选择照片 1"_s);
    driver.tap(u"完成(1)"_s, QAccessible::Button);
    driver.see(u"您扫描的条形码结果如下： "_s);
    driver.see(code);
    driver.photograph();
    driver.tap(u"back"_s);
    driver.see(scanPrompt);
    driver.tap(Texts::back, QAccessible::Button);
    BridgePage::see(driver);
    driver.check(!driver.page().find(BridgePage::outputOf(u"onQrResult2H5"_s))->text.contains(code),
        u"a code of the album never reaches the page"_s);
}

void scanQrCode(Driver &driver)
{
    const QString code = u"https://vant.example/class/301"_s;
    SampleCodes::sheet({1280, 720}, {SampleCodes::qr(code)})
        .save(driver.profile() + u'/' + cameraFeed);
    BridgePage::press(driver, u"scanQrCode"_s);
    driver.page().bringIntoView(BridgePage::outputOf(u"onQrResult2H5"_s));
    driver.seeInPage(BridgePage::outputOf(u"onQrResult2H5"_s), code);
}

// There is no position on a machine without a source of them; the page hears so.
void getLocation(Driver &driver)
{
    BridgePage::press(driver, u"getBDLocation"_s);
    driver.page().bringIntoView(BridgePage::outputOf(u"onGetBDLocation"_s));
    driver.seeInPage(BridgePage::outputOf(u"onGetBDLocation"_s), u"[result: string]"_s);
}

void getWechatAuthCode(Driver &driver)
{
    const QUrl page = driver.seeOpened([&] { BridgePage::press(driver, u"getWechatAuthCode"_s); });
    driver.check(QUrlQuery(page).queryItemValue(u"state"_s) == u"8888",
        u"%1 carries the pages' state"_s.arg(page.toString()));
    WeChatPage::press(driver, page, WeChatPage::agree);
    driver.page().bringIntoView(BridgePage::outputOf(u"onWechatResult2H5"_s));
    driver.seeInPage(BridgePage::outputOf(u"onWechatResult2H5"_s), u"[result: string]"_s);
}

void sharePicture(Driver &driver)
{
    BridgePage::press(driver, u"share"_s);
    driver.seeAll({u"微信好友"_s, u"朋友圈"_s, u"QQ好友"_s, u"保存至相册"_s});
    driver.seeToast(u"分享成功！"_s, [&] { driver.tap(u"保存至相册"_s, QAccessible::Button); });
    driver.seeNothingOf(u"保存至相册"_s);
}

void linkShare(Driver &driver)
{
    BridgePage::press(driver, u"linkShare"_s);
    driver.seeAll({u"微信好友"_s, u"朋友圈"_s, u"QQ好友"_s});
    driver.check(!driver.screen().shows(u"保存至相册"_s), u"a link is not offered to the album"_s);
    driver.tap(u"微信好友"_s, QAccessible::Button);
    driver.see(u"链接的二维码"_s);
    driver.photograph();
    driver.tap(Texts::close, QAccessible::Button);
    driver.seeNothingOf(u"链接的二维码"_s);
}

void linkShareToQQ(Driver &driver)
{
    BridgePage::press(driver, u"linkShare"_s);
    driver.see(u"QQ好友"_s);
    driver.photograph();
    const QUrl page = driver.seeOpened([&] { driver.tap(u"QQ好友"_s, QAccessible::Button); });
    const QUrlQuery query(page);
    driver.check(
        !query.queryItemValue(u"url"_s).isEmpty() && !query.queryItemValue(u"title"_s).isEmpty(),
        u"%1 carries the link and its title"_s.arg(page.toString()));
    driver.seeNothingOf(u"QQ好友"_s);
    driver.check(!driver.screen().shows(u"分享成功！"_s), u"nobody knows yet how it ended"_s);
}

void outlinkPage(Driver &driver)
{
    BridgePage::press(driver, u"jump2OutlinkPage"_s);
    driver.seePage(u"/portal/outlink.html"_s, u"main h2"_s);
    driver.tap(u"菜单"_s, QAccessible::Button);
    driver.see(u"   刷新"_s);
    driver.photograph();
    driver.wire().mark();
    driver.tap(u"   刷新"_s);
    driver.waitFor(u"the page to be asked for again"_s,
        [&] { return !driver.wire().requests(isPath(u"/portal/outlink.html"_s)).isEmpty(); });
    driver.seePage(u"/portal/outlink.html"_s, u"main h2"_s);
    BridgePage::press(driver, u"changeStatusColor"_s);
    driver.waitFor(
        u"the strip to become red"_s, [&] { return driver.statusStrip() == QColor(Qt::red); });
    driver.tap(Texts::close, QAccessible::Button);
    BridgePage::see(driver);
}

void landscapePage(Driver &driver)
{
    BridgePage::press(driver, u"jump2OutlinkLandscapePage"_s);
    driver.seePage(u"/portal/landscape.html"_s, u"#size"_s);
    driver.check(
        driver.page().read(u"innerWidth > innerHeight"_s).toBool(), u"the page lies on its side"_s);
    driver.photograph();
    BridgePage::press(driver, u"backLastVC"_s);
    BridgePage::see(driver);
}

void pushInForeground(Driver &driver)
{
    const QString question = u"你收到一条消息，是否点击查看？"_s;
    driver.wire().push(plainPage);
    driver.see(question);
    driver.photograph();
    driver.tap(u"确定"_s, QAccessible::Button);
    driver.seePage(plainPage, u"#address"_s);
    driver.seeNothingOf(question);
    BridgePage::comeBack(driver);
}

// The desktop starts the client with what was tapped; the one that runs takes it.
void pushTapped(Driver &driver)
{
    const QUrl page = driver.wire().address(plainPage);
    driver.desktop().start({u"--push"_s, u"{\"payload\": \"%1\"}"_s.arg(page.toString())});
    driver.seePage(plainPage, u"#address"_s);
    driver.photograph();
    BridgePage::comeBack(driver);
}

}

QList<Step> deviceSteps()
{
    return {
        {u"scanner"_s, {BridgePage::step}, Lives::signIn, scanner},
        {u"scan-from-album"_s, {u"scanner"_s}, Lives::signIn, scanFromAlbum},
        BridgePage::handler(u"scanQrCode"_s, scanQrCode),
        BridgePage::handler(u"getBDLocation"_s, getLocation),
        BridgePage::handler(u"getWechatAuthCode"_s, getWechatAuthCode),
        BridgePage::handler(u"share"_s, sharePicture),
        BridgePage::handler(u"linkShare"_s, linkShare),
        {u"link-share-to-qq"_s, {BridgePage::step}, Lives::signIn, linkShareToQQ},
        BridgePage::handler(u"jump2OutlinkPage"_s, outlinkPage),
        BridgePage::handler(u"jump2OutlinkLandscapePage"_s, landscapePage),
        {u"push-in-foreground"_s, {BridgePage::step}, Lives::signIn, pushInForeground},
        {u"push-tapped"_s, {BridgePage::step}, Lives::signIn, pushTapped},
    };
}
