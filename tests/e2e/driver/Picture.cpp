#include "e2e/driver/Picture.h"

#include <QColor>
#include <QQuickWindow>

#include <algorithm>

namespace {

// Of 255; far less than what a reader needs, far more than what smoothing leaves.
constexpr int leastContrast = 40;

}

Picture Picture::of(QQuickWindow *window)
{
    Picture picture;
    picture.m_image = window->grabWindow().convertToFormat(QImage::Format_RGB32);
    picture.m_scale = window->width() > 0 ? double(picture.m_image.width()) / window->width() : 1;
    return picture;
}

Picture Picture::below(double y) const
{
    Picture picture = *this;
    picture.m_image = m_image.copy(m_image.rect().adjusted(0, int(y * m_scale), 0, 0));
    return picture;
}

QColor Picture::colorAt(QPointF point) const
{
    const QPoint pixel = (point * m_scale).toPoint();
    return m_image.valid(pixel) ? m_image.pixelColor(pixel) : QColor();
}

bool Picture::hasInk(const QRectF &place) const
{
    const QRect area = QRectF(place.topLeft() * m_scale, place.size() * m_scale).toAlignedRect()
        & m_image.rect();
    int darkest = 255;
    int lightest = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(m_image.constScanLine(y));
        for (int x = area.left(); x <= area.right(); ++x) {
            const int grey = qGray(line[x]);
            darkest = std::min(darkest, grey);
            lightest = std::max(lightest, grey);
        }
    }
    return lightest - darkest >= leastContrast;
}

bool Picture::save(const QString &filePath) const
{
    return m_image.save(filePath);
}
