#pragma once

#include <QString>

#include <functional>

class QUrl;

//! What the pages ask of the device and of other screens.
class PageServices
{
public:
    using Answer = std::function<void(const QString &text)>;

    virtual ~PageServices() = default;

    //! Answered with the string that was read; not at all when nothing was.
    virtual void scanQrCode(Answer onQrResult) = 0;
    //! The user has signed in: positions may be asked for from now on.
    virtual void initLocation() = 0;
    //! Answered once, with a JSON text.
    virtual void getLocation(Answer onGetBDLocation) = 0;
    virtual void action(const QUrl &imageUrl) = 0;
    virtual void linkShareAction(
        const QString &url, const QString &title, const QString &content, const QString &imageUrl)
        = 0;
    virtual void jump2Outlink(const QString &url, const QString &title, const QString &color) = 0;
    virtual void jump2OutlinkLandscape(const QString &url) = 0;
};
