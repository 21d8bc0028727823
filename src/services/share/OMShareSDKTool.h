#pragma once

#include "model/DeploymentConfiguration.h"
#include "platform/services/ShareSDK.h"

class WXApi;

//! The share service as the client uses it: its registration at launch, and the share call of the
//! pages.
namespace OMShareSDKTool {

//! Registers QQ and WeChat with the share service, and the application with WeChat.
void registerShareSDK(ShareSDK &sdk, WXApi &wxApi, const DeploymentConfiguration &configuration);

//! State and, of a failure, its message.
using Completed = ShareSDK::StateChanged;

//! Shares an image, or none, with a title and a text that lead to the redirect URL. Title and
//! redirect URL both empty: a failure.
void shareAcitonWithImage(ShareSDK &sdk, const QByteArray &image, const QString &imageUrl,
    const QString &title, const QString &content, const QString &redirectUrl,
    ShareSDK::Platform platformType, ShareContent::Type contentType, Completed completed);

}
