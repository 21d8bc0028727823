#pragma once

#include <QImage>
#include <QPainter>
#include <QVideoFrame>

#include <algorithm>

#define ZX_USE_UTF8 1
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

//! Pictures of codes for tests.
namespace SampleCodes {

using Format = ZXing::BarcodeFormat;

inline QImage picture(Format format, const QString &text, QSize size = {400, 400})
{
    const ZXing::BitMatrix matrix = ZXing::MultiFormatWriter(format)
                                        .setEncoding(ZXing::CharacterSet::UTF8)
                                        .setMargin(10)
                                        .encode(text.toStdString(), size.width(), size.height());
    QImage image(matrix.width(), matrix.height(), QImage::Format_RGB32);
    for (int y = 0; y < matrix.height(); ++y) {
        for (int x = 0; x < matrix.width(); ++x)
            image.setPixelColor(x, y, matrix.get(x, y) ? Qt::black : Qt::white);
    }
    return image;
}

inline QImage qr(const QString &text)
{
    return picture(Format::QRCode, text);
}

//! The pictures beside each other on a sheet of the size.
inline QImage sheet(QSize size, const QList<QImage> &pictures, QColor paper = Qt::gray)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(paper);
    QPainter painter(&image);
    int x = 60;
    for (const QImage &picture : pictures) {
        painter.drawImage(x, (size.height() - picture.height()) / 2, picture);
        x += picture.width() + 60;
    }
    return image;
}

//! The picture as a camera delivers it: its brightness at every `step` bytes from `first`.
inline QVideoFrame frame(
    const QImage &picture, QVideoFrameFormat::PixelFormat format, int first = 0, int step = 1)
{
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    QVideoFrame frame(QVideoFrameFormat(grey.size(), format));
    if (!frame.map(QVideoFrame::WriteOnly))
        qFatal("no frame of format %d", format);
    for (int y = 0; y < grey.height(); ++y) {
        uchar *line = frame.bits(0) + qsizetype(y) * frame.bytesPerLine(0);
        for (int x = 0; x < grey.width(); ++x)
            std::fill_n(line + x * step + first, step == 4 ? 4 : 1, grey.constScanLine(y)[x]);
    }
    frame.unmap();
    return frame;
}

}
