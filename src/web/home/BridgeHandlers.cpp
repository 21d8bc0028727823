#include "web/home/BridgeHandlers.h"

#include "model/DictionaryMapper.h"
#include "model/StringFormat.h"
#include "web/bridge/BridgeResult.h"
#include "web/bridge/WebViewJavascriptBridge.h"
#include "web/portal/PageServices.h"
#include "web/home/STHomeViewController.h"

using namespace Qt::StringLiterals;

namespace {

using Respond = WebViewJavascriptBridge::Respond;

// Nothing checks what a page sends: a missing or mistyped value goes on as nothing.
QString text(const QJsonValue &data, QLatin1StringView key)
{
    return data[key].toString(QString());
}

constexpr QLatin1StringView objKey("obj");
constexpr int saveImagesEnabled = 1;

}

void BridgeHandlers::registerAll(WebViewJavascriptBridge *bridge, STHomeViewController *home)
{
    using D = const QJsonValue &;
    using R = const Respond &;
    const auto on = [bridge](const char *name, WebViewJavascriptBridge::Handler handler) {
        bridge->registerHandler(QString::fromLatin1(name), std::move(handler));
    };

    on("getRequestUrl", [home](D, R respond) { home->getRequestUrl(respond); });
    on("detectOnline", [home](D, R respond) { respond(bridgeResult(int(home->isOnline()))); });
    on("jump2LoginPage", [home](D, R) { home->jump2LoginPage(); });
    on("logout", [home](D, R) { home->logout(); });
    on("getAppInfo", [home](D, R respond) { home->getAppInfo(respond); });
    on("scanQrCode", [home](D, R) { home->scanQrCode(); });
    on("quickLoginApp", [home](D data, R) { home->quickLogin(text(data, "href"_L1)); });
    on("jump2OutlinkPage", [home](D data, R) {
        const QJsonValue obj = data[objKey];
        home->services()->jump2Outlink(
            text(obj, "url"_L1), text(obj, "title"_L1), text(obj, "color"_L1));
    });
    on("jump2OutlinkLandscapePage",
        [home](D data, R) { home->services()->jump2OutlinkLandscape(text(data, "url"_L1)); });
    on("share", [home](D data, R) { home->services()->action(QUrl(text(data, "imgUrl"_L1))); });
    on("linkShare", [home](D data, R) {
        const QJsonValue obj = data[objKey];
        home->services()->linkShareAction(text(obj, "url"_L1), text(obj, "title"_L1),
            text(obj, "content"_L1), text(obj, "imageUrl"_L1));
    });
    on("changeStatusColor", [home](D data, R) { home->changeStatusColor(text(data, "color"_L1)); });
    on("getBDLocation", [home](D, R) { home->getLocation(); });
    on("getWechatAuthCode", [home](D, R) { home->wechatLogin(); });
    on("setLongClickSaveImg", [home](D data, R) {
        home->longClickSaveImgAble
            = DictionaryMapper::integer(data["able"_L1]) == saveImagesEnabled;
    });
    on("slicingUpload", [home](D data, R) { home->slicingUpload(data.toObject()); });
}
