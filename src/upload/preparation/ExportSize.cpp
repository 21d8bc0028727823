#include "upload/preparation/ExportSize.h"

#include <QtMath>

namespace {

constexpr QSize lying(960, 540);

int even(double length, int most)
{
    const int nearest = qRound(length / 2) * 2;
    return qMax(2, qMin(nearest, most / 2 * 2));
}

}

QSize exportSize(const QSize &clip)
{
    const QSize box = clip.width() < clip.height() ? lying.transposed() : lying;
    const double scale
        = qMin(1.0, qMin(double(box.width()) / clip.width(), double(box.height()) / clip.height()));
    return {even(clip.width() * scale, qMin(box.width(), clip.width())),
        even(clip.height() * scale, qMin(box.height(), clip.height()))};
}
