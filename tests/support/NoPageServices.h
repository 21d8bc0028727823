#pragma once

#include "web/portal/PageServices.h"

//! For tests in which no page asks for anything.
class NoPageServices : public PageServices
{
public:
    void scanQrCode(Answer) override { }
    void initLocation() override { ++locationInits; }
    void getLocation(Answer) override { }
    void action(const QUrl &) override { }
    void linkShareAction(
        const QString &, const QString &, const QString &, const QString &) override
    {
    }
    void jump2Outlink(const QString &, const QString &, const QString &) override { }
    void jump2OutlinkLandscape(const QString &) override { }

    int locationInits = 0;
};
