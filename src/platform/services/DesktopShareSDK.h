#pragma once

#include "platform/services/ShareSDK.h"

#include <QObject>

class PhotoLibrary;
class QImage;
class ShareLinkSheet;
class UrlOpener;

//! Sharing by what a desktop or a phone without the vendors' libraries has. Owned by the
//! application; what it is given must outlive it.
//!
//! A link goes to QQ by its share page in the browser, and to WeChat by a code on the screen that
//! the person's WeChat reads. A picture without a link is put on the clipboard and the target's
//! program is opened. The album takes the picture as it came.
class DesktopShareSDK : public QObject, public ShareSDK
{
    Q_OBJECT

public:
    //! \a qqShareUrl: address of the share page; empty: links cannot be shared to QQ.
    DesktopShareSDK(UrlOpener *opener, PhotoLibrary *album, ShareLinkSheet *linkSheet,
        const QString &qqShareUrl);

    //! None of these ways asks who registered.
    bool registerPlatforms(const Platforms &) override { return true; }
    //! Nothing is collected.
    void uploadPrivacyPermissionStatus(bool) override { }
    //! Not called back if this object goes first.
    void share(Platform platform, const ShareContent &content, StateChanged changed) override;

private:
    void carryOut(Platform platform, const ShareContent &content, const StateChanged &changed);
    void saveImage(const QByteArray &image, const StateChanged &changed);
    //! Null: handed over; else what went wrong.
    QString handOverLink(Platform platform, const ShareContent &content);
    QString openQQSharePage(const ShareContent &content);
    void handOverImage(Platform platform, const QByteArray &encoded, const StateChanged &changed);
    QString copyImage(Platform platform, const QImage &image);

    UrlOpener *m_opener;
    PhotoLibrary *m_album;
    ShareLinkSheet *m_linkSheet;
    QString m_qqShareUrl;
};
