#include "e2e/steps/Places.h"
#include "e2e/steps/Steps.h"
#include "services/SampleCodes.h"

#include <QColor>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString scanPrompt = QStringLiteral("将二维码/条码放入框内, 即可自动扫描");
const QString pushedPage = QStringLiteral("/portal/plain.html?from=push");

}

void deviceSteps(Journey &journey)
{
    // There is nothing to read before the camera yet.
    journey.step(u"scanner"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"scanQrCode"_s);
        driver.see(scanPrompt);
        driver.photograph();
    });

    journey.step(u"scan-from-album"_s, u"scanner"_s, [](Driver &driver) {
        const QString code = u"2026-0301"_s;
        SampleCodes::qr(code).save(driver.profile() + u"/Pictures/码.png"_s);
        driver.tap(u"相册"_s, Button);
        driver.tap(u"选择照片 1"_s);
        driver.tap(u"完成(1)"_s, Button);
        driver.seeAll({u"您扫描的条形码结果如下： "_s, code});
        driver.photograph();
        driver.tap(u"back"_s);
        driver.see(scanPrompt);
        driver.tap(Texts::back, Button);
        BridgePage::see(driver);
        driver.check(!driver.page().find(u"#out-onQrResult2H5"_s)->text.contains(code),
            u"a code of the album never reaches the page"_s);
    });

    journey.step(u"bridge-scanQrCode"_s, BridgePage::step, [](Driver &driver) {
        const QString code = u"https://vant.example/class/301"_s;
        SampleCodes::sheet({1280, 720}, {SampleCodes::qr(code)})
            .save(driver.profile() + u'/' + cameraFeed);
        BridgePage::press(driver, u"scanQrCode"_s);
        BridgePage::seeOutput(driver, u"onQrResult2H5"_s, code);
    });

    // There is no position on a machine without a source of them; the page hears so.
    journey.step(u"bridge-getBDLocation"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"getBDLocation"_s);
        BridgePage::seeOutput(driver, u"onGetBDLocation"_s, u"[result: string]"_s);
    });

    journey.step(u"bridge-getWechatAuthCode"_s, BridgePage::step, [](Driver &driver) {
        const QUrl page
            = driver.seeOpened([&] { BridgePage::press(driver, u"getWechatAuthCode"_s); });
        driver.check(QUrlQuery(page).queryItemValue(u"state"_s) == u"8888",
            u"%1 carries the pages' state"_s.arg(page.toString()));
        WeChatPage::press(driver, page, WeChatPage::agree);
        BridgePage::seeOutput(driver, u"onWechatResult2H5"_s, u"[result: string]"_s);
    });

    journey.step(u"bridge-share"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"share"_s);
        driver.seeAll({u"微信好友"_s, u"朋友圈"_s, u"QQ好友"_s});
        driver.seeToast(u"分享成功！"_s, u"保存至相册"_s);
        driver.seeNothingOf(u"保存至相册"_s);
    });

    journey.step(u"bridge-linkShare"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"linkShare"_s);
        driver.seeAll({u"微信好友"_s, u"朋友圈"_s, u"QQ好友"_s});
        driver.check(
            !driver.screen().shows(u"保存至相册"_s), u"a link is not offered to the album"_s);
        driver.tap(u"微信好友"_s, Button);
        driver.see(u"链接的二维码"_s);
        driver.answer(Texts::close, u"链接的二维码"_s);
    });

    journey.step(u"link-share-to-qq"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"linkShare"_s);
        const QUrl page = driver.seeOpened([&] { driver.answer(u"QQ好友"_s, u"QQ好友"_s); });
        const QUrlQuery query(page);
        driver.check(!query.queryItemValue(u"url"_s).isEmpty()
                && !query.queryItemValue(u"title"_s).isEmpty(),
            u"%1 carries the link and its title"_s.arg(page.toString()));
        driver.check(!driver.screen().shows(u"分享成功！"_s), u"nobody knows yet how it ended"_s);
    });

    journey.step(u"bridge-jump2OutlinkPage"_s, BridgePage::step, [](Driver &driver) {
        const QString path = u"/portal/outlink.html"_s;
        BridgePage::press(driver, u"jump2OutlinkPage"_s);
        driver.seePage(path, u"main h2"_s);
        driver.tap(u"菜单"_s, Button);
        driver.see(u"   刷新"_s);
        driver.photograph();
        driver.wire().mark();
        driver.tap(u"   刷新"_s);
        driver.waitFor(u"the page to be asked for again"_s,
            [&] { return !driver.wire().requests(isPath(path)).isEmpty(); });
        driver.seePage(path, u"main h2"_s);
        BridgePage::press(driver, u"changeStatusColor"_s);
        driver.seeStatusStrip(Qt::red);
        driver.tap(Texts::close, Button);
        BridgePage::see(driver);
    });

    journey.step(u"bridge-jump2OutlinkLandscapePage"_s, BridgePage::step, [](Driver &driver) {
        BridgePage::press(driver, u"jump2OutlinkLandscapePage"_s);
        driver.seePage(u"/portal/landscape.html"_s, u"#size"_s);
        driver.check(driver.page().read(u"innerWidth > innerHeight"_s).toBool(),
            u"the page lies on its side"_s);
        driver.photograph();
        BridgePage::press(driver, u"backLastVC"_s);
        BridgePage::see(driver);
    });

    journey.step(u"push-in-foreground"_s, BridgePage::step, [](Driver &driver) {
        driver.wire().push(pushedPage);
        driver.see(Texts::pushQuestion);
        driver.answer(Texts::confirm, Texts::pushQuestion);
        driver.seePage(pushedPage, u"#address"_s);
        BridgePage::comeBack(driver);
    });

    // The desktop starts the client with what was tapped; the one that runs takes it.
    journey.step(u"push-tapped"_s, BridgePage::step, [](Driver &driver) {
        const QUrl page = driver.wire().address(pushedPage);
        driver.desktop().start({u"--push"_s, u"{\"payload\": \"%1\"}"_s.arg(page.toString())});
        driver.seePage(pushedPage, u"#address"_s);
        driver.photograph();
        BridgePage::comeBack(driver);
    });
}
