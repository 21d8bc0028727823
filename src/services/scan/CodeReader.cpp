#include "services/scan/CodeReader.h"

#include "platform/media/BoundedImage.h"
#include "services/Logging.h"
#include "services/scan/LumaPlane.h"

#include <QImageReader>
#include <QPainter>
#include <QTransform>
#include <QVideoFrame>

// The library's next name for its texts, which this one has already.
#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <algorithm>
#include <cmath>

namespace {

// What a phone's camera makes is read whole; a larger picture gains nothing but time.
constexpr int longestSide = 4096;
// Blurred edges are found again where the picture is smaller.
constexpr std::initializer_list<double> scales {1, 0.5, 0.25};
// Lines across a code are read up to about this angle from straight; quarters turn by themselves.
constexpr std::initializer_list<double> angles {0, 45};

enum class Effort { Quick, Thorough };

ZXing::DecodeHints hintsFor(Effort effort, ZXing::Binarizer binarizer)
{
    using ZXing::BarcodeFormat;
    return ZXing::DecodeHints()
        .setFormats(BarcodeFormat::QRCode | BarcodeFormat::EAN13 | BarcodeFormat::EAN8
            | BarcodeFormat::Code128)
        .setTryHarder(effort == Effort::Thorough)
        .setTryRotate(true)
        .setTryDownscale(false)
        .setBinarizer(binarizer);
}

// One code at the most: where it finds several, the library compares them and aborts at some.
QStringList decode(const ZXing::ImageView &view, const ZXing::DecodeHints &hints)
{
    try {
        const ZXing::Result result = ZXing::ReadBarcode(view, hints);
        if (result.isValid())
            return {QString::fromStdString(result.text())};
    } catch (const std::exception &problem) {
        qCWarning(lcServices) << "a picture cannot be searched for codes:" << problem.what();
    }
    return {};
}

// What is transparent is paper.
QImage greyOnPaper(const QImage &picture)
{
    QImage opaque(picture.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(opaque.rect(), picture);
    return opaque.convertToFormat(QImage::Format_Grayscale8);
}

QString firstTextIn(QImage grey)
{
    using ZXing::Binarizer;
    for (int attempt = 0; attempt < 2; ++attempt, grey.invertPixels()) {
        for (const Binarizer binarizer : {Binarizer::LocalAverage, Binarizer::GlobalHistogram}) {
            const QString text = decode({grey.constBits(), grey.width(), grey.height(),
                                            ZXing::ImageFormat::Lum, int(grey.bytesPerLine())},
                hintsFor(Effort::Thorough, binarizer))
                                     .value(0);
            if (!text.isEmpty())
                return text;
        }
    }
    return {};
}

}

double CodeReader::brightnessOf(double meanLuma)
{
    return 2 + std::log2(std::pow(std::max(meanLuma, 1.0) / 255, 2.2) / 0.18);
}

CodeReader::FrameContent CodeReader::readFrame(QVideoFrame frame)
{
    FrameContent content {.codes = {}, .brightness = 2};
    if (!frame.map(QVideoFrame::ReadOnly))
        return content;
    if (const LumaPlane luma(frame); !luma.isEmpty()) {
        content.brightness = brightnessOf(luma.mean());
        content.codes = decode(
            {luma.bits, luma.width, luma.height, ZXing::ImageFormat::Lum, luma.bytesPerLine},
            hintsFor(Effort::Quick, ZXing::Binarizer::LocalAverage));
    }
    frame.unmap();
    return content;
}

QString CodeReader::readPicture(const QImage &picture)
{
    for (const double angle : angles) {
        const QImage turned
            = picture.transformed(QTransform().rotate(angle), Qt::SmoothTransformation);
        for (const double scale : scales) {
            const QSize size = turned.size() * scale;
            if (size.isEmpty())
                break;
            const QString text = firstTextIn(
                greyOnPaper(turned.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
            if (!text.isEmpty())
                return text;
        }
    }
    return {};
}

QString CodeReader::readFile(const QString &filePath)
{
    QImageReader reader(filePath);
    const QImage picture = BoundedImage::read(reader, [](const QSize &size) {
        return std::max(size.width(), size.height()) > longestSide
            ? size.scaled(longestSide, longestSide, Qt::KeepAspectRatio)
            : size;
    });
    if (picture.isNull())
        qCInfo(lcServices) << "the picture cannot be read:" << reader.errorString();
    return readPicture(picture);
}
