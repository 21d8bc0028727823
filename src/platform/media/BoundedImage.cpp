#include "platform/media/BoundedImage.h"

#include "platform/Logging.h"

#include <QImage>
#include <QImageReader>

namespace {

constexpr qint64 bytesInPixel = 4;
constexpr qint64 bytesInMegabyte = 1'048'576;

bool isWithin(const QSize &inFile, const QSize &inMemory)
{
    return BoundedImage::pixelsOf(inFile) <= BoundedImage::mostPixelsInFile
        && BoundedImage::pixelsOf(inMemory) <= BoundedImage::mostPixels;
}

}

QImage BoundedImage::read(QImageReader &reader, const Scaling &scaling)
{
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // Where it says no size beforehand, the toolkit's own bound is all there is.
    if (const QSize size = reader.size(); size.isValid()) {
        const QSize wanted = scaling ? scaling(size) : size;
        if (!isWithin(size, wanted)) {
            qCWarning(lcPlatform) << "a picture is too large to be read:" << size;
            return {};
        }
        if (wanted != size)
            reader.setScaledSize(wanted);
    }
    return reader.read();
}

void BoundedImage::limitToolkit()
{
    QImageReader::setAllocationLimit(int(mostPixels * bytesInPixel / bytesInMegabyte));
}
