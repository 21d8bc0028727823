#pragma once

#include "platform/WXApi.h"

//! Stands where WeChat authorisation is not set up: nothing can be asked for, no URL is a callback.
class UnavailableWXApi : public WXApi
{
    Q_OBJECT

public:
    bool registerApp(const QString &appId, const QString &universalLink) override;
    bool sendAuthReq(const QString &scope, const QString &state) override;
    bool handleOpenURL(const QUrl &) override { return false; }
    bool handleOpenUniversalLink(const QUrl &) override { return false; }
};
