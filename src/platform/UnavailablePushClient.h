#pragma once

#include "platform/PushClient.h"

//! Stands where no push service is configured: every registration fails and says why.
class UnavailablePushClient : public PushClient
{
    Q_OBJECT

public:
    void startSdk(const QString &appId, const QString &appKey, const QString &appSecret) override;
    void registerRemoteNotification(int types) override;
    void resetBadge() override { }
};
