#pragma once

#include "platform/ShareSDK.h"

//! Stands where no share service is set up.
class UnavailableShareSDK : public ShareSDK
{
public:
    bool registerPlatforms(const QString &wechatAppId, const QString &qqAppId) override;
    void uploadPrivacyPermissionStatus(bool) override { }
};
