#include "launch/ad/PictureFrames.h"

#include <QList>

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

const QList<QByteArray> trustedFormats {"png", "jpeg", "gif", "webp", "bmp"};
constexpr int maximumSide = 8192;
constexpr qint64 maximumPixels = 32 * 1024 * 1024;
// Pictures that ask for less are shown at this pace everywhere.
constexpr auto shortestDelay = 20ms;
constexpr auto usualDelay = 100ms;

}

PictureFrames::PictureFrames(const QByteArray &encoded, const QSize &area)
    : m_area(area)
{
    m_encoded.setData(encoded);
    m_encoded.open(QIODevice::ReadOnly);
    m_reader.setDecideFormatFromContent(true);
    m_reader.setAutoTransform(true);
}

void PictureFrames::rewind()
{
    m_encoded.seek(0);
    m_reader.setDevice(&m_encoded);
    // Before anything that would have the content parsed.
    m_trusted = trustedFormats.contains(m_reader.format());
    m_animated = m_trusted && m_reader.supportsAnimation() && m_reader.imageCount() > 1;
}

QImage PictureFrames::read()
{
    if (!std::exchange(m_begun, true))
        rewind();
    if (!m_trusted)
        return {};
    const QSize size = m_reader.size();
    if (!size.isValid() || std::max(size.width(), size.height()) > maximumSide
        || qint64(size.width()) * size.height() > maximumPixels)
        return {};
    const QSize covering = size.scaled(m_area, Qt::KeepAspectRatioByExpanding);
    if (m_area.isValid() && covering.width() < size.width())
        m_reader.setScaledSize(covering);
    return m_reader.read();
}

std::optional<PictureFrames::Frame> PictureFrames::next()
{
    QImage image = read();
    if (image.isNull() && m_animated) {
        rewind();
        image = read();
    }
    if (image.isNull())
        return {};
    // The painter's own formats, so that drawing has nothing left to convert.
    image.convertTo(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (!m_animated)
        return Frame {image};
    const std::chrono::milliseconds asked(m_reader.nextImageDelay());
    return Frame {image, asked < shortestDelay ? usualDelay : asked};
}
