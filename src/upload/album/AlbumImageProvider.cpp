#include "upload/album/AlbumImageProvider.h"

#include "upload/album/AlbumImageResponse.h"
#include "upload/preparation/Thumbnail.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKiB = 32 * 1024;
constexpr int thumbnailSide = 256;
constexpr int largestSide = 4096;
constexpr auto base64 = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

}

AlbumImageProvider::AlbumImageProvider()
    : m_images(cacheKiB)
{
}

AlbumImageProvider::~AlbumImageProvider()
{
    m_end.request_stop();
    m_threads.clear();
    m_threads.waitForDone();
}

QUrl AlbumImageProvider::address(const PhotoAsset &asset)
{
    // The date makes a changed file another picture; a file name may hold anything.
    return QUrl(u"image://%1/%2/%3/%4"_s.arg(QLatin1StringView(name),
        asset.isVideo ? u"clip"_s : u"photo"_s, QString::number(asset.modified.toMSecsSinceEpoch()),
        QString::fromLatin1(asset.filePath.toUtf8().toBase64(base64))));
}

QQuickImageResponse *AlbumImageProvider::requestImageResponse(
    const QString &id, const QSize &requestedSize)
{
    auto *response = new AlbumImageResponse;
    m_threads.start(
        response->reading([this, id, requestedSize, end = m_end.get_token()](std::stop_source own) {
            const std::stop_callback stopsWithAll(end, [&own] { own.request_stop(); });
            return read(id, requestedSize, own.get_token());
        }));
    return response;
}

QImage AlbumImageProvider::read(const QString &id, const QSize &requestedSize, std::stop_token stop)
{
    // photo or clip / date / file path [ / whole]
    const QStringList parts = id.split(u'/');
    if (stop.stop_requested() || parts.size() < 3)
        return {};
    const int asked = std::max(requestedSize.width(), requestedSize.height());
    const int side = std::clamp(asked > 0 ? asked : thumbnailSide, 1, largestSide);
    const QString key = u"%1@%2"_s.arg(id).arg(side);
    {
        const QMutexLocker locker(&m_guard);
        if (const QImage *image = m_images.object(key))
            return *image;
    }

    const QString filePath = QString::fromUtf8(QByteArray::fromBase64(parts[2].toLatin1(), base64));
    const auto mode = parts.size() > 3 ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding;
    const Thumbnail thumbnail = parts[0] == u"clip" ? Thumbnail::ofVideo(filePath, side, mode, stop)
                                                    : Thumbnail::ofPhoto(filePath, side, mode);
    if (thumbnail.duration.count() > 0)
        Q_EMIT durationKnown(filePath, thumbnail.duration);
    if (!thumbnail.image.isNull()) {
        const QMutexLocker locker(&m_guard);
        m_images.insert(
            key, new QImage(thumbnail.image), qsizetype(thumbnail.image.sizeInBytes() / 1024 + 1));
    }
    return thumbnail.image;
}
