#include "upload/preparation/Thumbnail.h"

#include "platform/media/BoundedImage.h"
#include "upload/preparation/MediaCodecs.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace {

// What it takes for the picture to fill the square, or to fit into it; the size itself when it is
// smaller.
QSize reduced(const QSize &size, int side, Qt::AspectRatioMode mode)
{
    const QSize scaled = size.scaled(side, side, mode).expandedTo(QSize(1, 1));
    return scaled.width() < size.width() ? scaled : size;
}

QImage finished(const QImage &image, int side, Qt::AspectRatioMode mode)
{
    if (image.isNull())
        return image;
    const QImage small = image.scaled(
        reduced(image.size(), side, mode), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QRect square(0, 0, qMin(side, small.width()), qMin(side, small.height()));
    square.moveCenter(small.rect().center());
    return square == small.rect() ? small : small.copy(square);
}

QImage readPhoto(QFile &file, int side, Qt::AspectRatioMode mode)
{
    if (HeifPhoto::isHeif(file.peek(HeifPhoto::signatureSize))) {
        if (file.size() > HeifPhoto::largestFile)
            return {};
        return MediaCodecs::shared().decodeSmallHeif(file.readAll(), side).image;
    }
    QImageReader reader(&file);
    // In the size before it is turned, which the square does not mind. Twice as large as needed,
    // for the smooth reduction after it.
    return BoundedImage::read(
        reader, [side, mode](const QSize &size) { return reduced(size, 2 * side, mode); });
}

}

Thumbnail Thumbnail::ofPhoto(const QString &filePath, int side, Qt::AspectRatioMode mode)
{
    QFile file(filePath);
    if (!QFileInfo(filePath).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return {finished(readPhoto(file, side, mode), side, mode)};
}

Thumbnail Thumbnail::ofVideo(
    const QString &filePath, int side, Qt::AspectRatioMode mode, std::stop_token stop)
{
    if (!QFileInfo(filePath).isFile())
        return {};
    const VideoFrame frame = MediaCodecs::shared().firstFrame(filePath, stop);
    return {finished(frame.image, side, mode), frame.duration};
}
