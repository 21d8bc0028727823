#pragma once

#include "platform/WXApi.h"

#include <QStringList>

//! Notes what was asked of WeChat; the answer is the test's.
class NotedWXApi : public WXApi
{
public:
    bool registerApp(const QString &, const QString &) override { return true; }
    bool sendAuthReq(const QString &scope, const QString &state) override
    {
        asked << scope + u' ' + state;
        return available;
    }
    bool handleOpenURL(const QUrl &) override { return false; }
    bool handleOpenUniversalLink(const QUrl &) override { return false; }

    bool available = true;
    QStringList asked;
};
