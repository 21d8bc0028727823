#include "services/scan/LumaPlane.h"

#include <QImage>
#include <QVideoFrame>

LumaPlane::LumaPlane(const QVideoFrame &frame)
    : width(frame.width())
    , height(frame.height())
{
    using Format = QVideoFrameFormat::PixelFormat;
    switch (frame.pixelFormat()) {
    case Format::Format_Y8:
    case Format::Format_NV12:
    case Format::Format_NV21:
    case Format::Format_YUV420P:
    case Format::Format_YUV422P:
    case Format::Format_YV12:
    case Format::Format_IMC1:
    case Format::Format_IMC2:
    case Format::Format_IMC3:
    case Format::Format_IMC4:
        bits = frame.bits(0);
        bytesPerLine = frame.bytesPerLine(0);
        break;
    case Format::Format_YUYV:
        copyEverySecondByte(frame, 0);
        break;
    case Format::Format_UYVY:
        copyEverySecondByte(frame, 1);
        break;
    default:
        convert(frame);
    }
}

double LumaPlane::mean() const
{
    constexpr int step = 8;
    qint64 sum = 0;
    qint64 count = 0;
    for (int y = 0; y < height; y += step) {
        const uchar *line = bits + qsizetype(y) * bytesPerLine;
        for (int x = 0; x < width; x += step, ++count)
            sum += line[x];
    }
    return count > 0 ? double(sum) / double(count) : 0;
}

void LumaPlane::copyEverySecondByte(const QVideoFrame &frame, int first)
{
    m_copy.resize(qsizetype(width) * height);
    auto *to = reinterpret_cast<uchar *>(m_copy.data());
    for (int y = 0; y < height; ++y, to += width) {
        const uchar *from = frame.bits(0) + qsizetype(y) * frame.bytesPerLine(0) + first;
        for (int x = 0; x < width; ++x)
            to[x] = from[2 * x];
    }
    bits = reinterpret_cast<const uchar *>(m_copy.constData());
    bytesPerLine = width;
}

void LumaPlane::convert(const QVideoFrame &frame)
{
    const QImage grey = frame.toImage().convertToFormat(QImage::Format_Grayscale8);
    if (grey.isNull())
        return;
    width = grey.width();
    height = grey.height();
    bytesPerLine = int(grey.bytesPerLine());
    m_copy = QByteArray(reinterpret_cast<const char *>(grey.constBits()), grey.sizeInBytes());
    bits = reinterpret_cast<const uchar *>(m_copy.constData());
}
