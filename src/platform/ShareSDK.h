#pragma once

#include <QString>

//! The share service's registration.
class ShareSDK
{
public:
    virtual ~ShareSDK() = default;

    //! Registers the WeChat and QQ applications; false when sharing is not available.
    virtual bool registerPlatforms(const QString &wechatAppId, const QString &qqAppId) = 0;
    //! Reports the user's consent to the collection of data.
    virtual void uploadPrivacyPermissionStatus(bool agreed) = 0;
};
