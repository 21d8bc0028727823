#include "platform/services/DesktopShareSDK.h"

#include "platform/Logging.h"
#include "platform/desktop/UrlOpener.h"
#include "platform/http/HTTPQuery.h"
#include "platform/media/BoundedImage.h"
#include "platform/media/PhotoLibrary.h"
#include "platform/services/ShareLinkSheet.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QPointer>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

//! \a failure: null: handed over.
void tell(const QString &failure, const ShareSDK::StateChanged &changed)
{
    using State = ShareSDK::State;
    changed(failure.isNull() ? State::HandedOver : State::Failure, failure);
}

}

DesktopShareSDK::DesktopShareSDK(
    UrlOpener *opener, PhotoLibrary *album, ShareLinkSheet *linkSheet, const QString &qqShareUrl)
    : m_opener(opener)
    , m_album(album)
    , m_linkSheet(linkSheet)
    , m_qqShareUrl(qqShareUrl)
{
}

void DesktopShareSDK::share(Platform platform, const ShareContent &content, StateChanged changed)
{
    QMetaObject::invokeMethod(
        this,
        [this, platform, content, changed = std::move(changed)] {
            carryOut(platform, content, changed);
        },
        Qt::QueuedConnection);
}

void DesktopShareSDK::carryOut(
    Platform platform, const ShareContent &content, const StateChanged &changed)
{
    if (platform == Platform::Album)
        return saveImage(content.image, changed);
    if (!content.url.isEmpty())
        tell(handOverLink(platform, content), changed);
    else if (!content.image.isEmpty())
        handOverImage(platform, content.image, changed);
    else
        tell(u"没有可分享的图片或链接"_s, changed);
}

void DesktopShareSDK::saveImage(const QByteArray &image, const StateChanged &changed)
{
    if (image.isEmpty())
        return changed(State::Failure, u"没有可保存的图片"_s);
    m_album->writeImageToSavedPhotosAlbum(
        image, [self = QPointer(this), changed](const QString &error) {
            if (!self)
                return;
            if (error.isNull())
                return changed(State::Success, {});
            qCWarning(lcPlatform) << "a shared picture was not saved:" << error;
            changed(State::Failure, u"图片无法保存"_s);
        });
}

QString DesktopShareSDK::handOverLink(Platform platform, const ShareContent &content)
{
    if (platform == Platform::QQFriend)
        return openQQSharePage(content);
    const bool shown = m_linkSheet->showLink(platform, content.title, content.url);
    return shown ? QString() : u"链接无法生成二维码"_s;
}

QString DesktopShareSDK::openQQSharePage(const ShareContent &content)
{
    if (m_qqShareUrl.isEmpty())
        return u"没有配置QQ分享"_s;
    const QUrl page = HTTPQuery::urlWithQuery(m_qqShareUrl,
        {{u"title"_s, content.title}, {u"summary"_s, content.text}, {u"url"_s, content.url},
            {u"pics"_s, content.imageUrl}});
    return m_opener->openURL(page) ? QString() : u"无法打开浏览器"_s;
}

// A large picture takes a while.
void DesktopShareSDK::handOverImage(
    Platform platform, const QByteArray &encoded, const StateChanged &changed)
{
    QThreadPool::globalInstance()->start([self = QPointer(this), platform, encoded, changed] {
        QBuffer buffer;
        buffer.setData(encoded);
        QImageReader reader(&buffer);
        const QImage image = BoundedImage::read(reader);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, platform, image, changed] {
                if (self)
                    tell(self->copyImage(platform, image), changed);
            },
            Qt::QueuedConnection);
    });
}

QString DesktopShareSDK::copyImage(Platform platform, const QImage &image)
{
    if (image.isNull())
        return u"图片无法读取"_s;
    QGuiApplication::clipboard()->setImage(image);
    const bool isQQ = platform == Platform::QQFriend;
    const QUrl program(isQQ ? u"mqq://"_s : u"weixin://"_s);
    if (m_opener->canOpenURL(program) && m_opener->openURL(program))
        return {};
    return isQQ ? u"没有安装QQ，图片已复制"_s : u"没有安装微信，图片已复制"_s;
}
