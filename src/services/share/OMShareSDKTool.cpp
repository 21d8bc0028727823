#include "services/share/OMShareSDKTool.h"

#include "platform/services/WXApi.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

void OMShareSDKTool::registerShareSDK(
    ShareSDK &sdk, WXApi &wxApi, const DeploymentConfiguration &configuration)
{
    const auto &wechat = configuration.wechat;
    sdk.registerPlatforms({.qqAppId = configuration.qq.appId,
        .qqAppKey = configuration.qq.appKey,
        .wechatAppId = wechat.appId,
        .universalLink = wechat.universalLink});
    wxApi.registerApp(wechat.appId, wechat.universalLink);
}

void OMShareSDKTool::shareAcitonWithImage(ShareSDK &sdk, const QByteArray &image,
    const QString &imageUrl, const QString &title, const QString &content,
    const QString &redirectUrl, ShareSDK::Platform platformType, ShareContent::Type contentType,
    Completed completed)
{
    if (title.isEmpty() && redirectUrl.isEmpty()) {
        QMetaObject::invokeMethod(
            qApp,
            [completed = std::move(completed)] {
                completed(ShareSDK::State::Failure, u"分享参数为空"_s);
            },
            Qt::QueuedConnection);
        return;
    }
    sdk.share(platformType, {title, content, redirectUrl, image, imageUrl, contentType},
        std::move(completed));
}
