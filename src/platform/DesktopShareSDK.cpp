#include "platform/DesktopShareSDK.h"

#include "platform/HTTPQuery.h"
#include "platform/Logging.h"
#include "platform/PhotoLibrary.h"
#include "platform/ShareLinkSheet.h"
#include "platform/UrlOpener.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPointer>

using namespace Qt::StringLiterals;

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
    QString failure;
    if (!content.url.isEmpty())
        failure = handOverLink(platform, content);
    else if (!content.image.isEmpty())
        failure = handOverImage(platform, content.image);
    else
        failure = u"没有可分享的图片或链接"_s;
    changed(failure.isNull() ? State::HandedOver : State::Failure, failure);
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

QString DesktopShareSDK::handOverImage(Platform platform, const QByteArray &encoded)
{
    const QImage image = QImage::fromData(encoded);
    if (image.isNull())
        return u"图片无法读取"_s;
    QGuiApplication::clipboard()->setImage(image);
    const bool isQQ = platform == Platform::QQFriend;
    const QUrl program(isQQ ? u"mqq://"_s : u"weixin://"_s);
    if (m_opener->canOpenURL(program) && m_opener->openURL(program))
        return {};
    return isQQ ? u"没有安装QQ，图片已复制"_s : u"没有安装微信，图片已复制"_s;
}
