#pragma once

#include <QString>

class QUrl;

//! What the pages ask of the device and of other screens. Results go back to the page later, by a
//! call of the shell.
class PageServices
{
public:
    virtual ~PageServices() = default;

    virtual void scanQrCode() = 0;
    virtual void getLocation() = 0;
    virtual void action(const QUrl &imageUrl) = 0;
    virtual void linkShareAction(
        const QString &url, const QString &title, const QString &content, const QString &imageUrl)
        = 0;
    virtual void jump2Outlink(const QString &url, const QString &title, const QString &color) = 0;
    virtual void jump2OutlinkLandscape(const QString &url) = 0;
};
