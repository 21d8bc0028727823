#include "launch/guide/GuideSeries.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Series
{
    QStringView name;
    QSize pixels;
};

// From the coarsest to the finest of a shape.
constexpr std::array allSeries {
    Series {u"user_guide_4_%d.png", {640, 960}},
    Series {u"user_guide_6_%d.png", {750, 1334}},
    Series {u"user_guide_XR_%d.png", {828, 1792}},
    Series {u"user_guide_X_%d.png", {1125, 2436}},
    Series {u"user_guide_XMax_%d.png", {1242, 2688}},
};

double shapeOf(const QSize &pixels)
{
    const auto [shorter, longer] = std::minmax({pixels.width(), pixels.height()});
    return double(longer) / std::max(shorter, 1);
}

// Drawings of nearly one shape may stand for each other.
constexpr double sameShape = 0.1;

}

QString GuideSeries::forScreen(const QSize &pixels)
{
    const double shape = shapeOf(pixels);
    const auto distance
        = [shape](const Series &series) { return std::abs(shapeOf(series.pixels) - shape); };
    const auto nearest = std::min_element(allSeries.begin(), allSeries.end(),
        [&](const Series &a, const Series &b) { return distance(a) < distance(b); });
    // Of this shape the coarsest that need not be enlarged, or the finest there is.
    const Series *chosen = nearest;
    const int width = std::min(pixels.width(), pixels.height());
    for (const Series &series : allSeries) {
        if (distance(series) > distance(*nearest) + sameShape)
            continue;
        chosen = &series;
        if (series.pixels.width() >= width)
            break;
    }
    return chosen->name.toString();
}

QString GuideSeries::picture(const QString &series, int page)
{
    return u"qrc:/assets/"_s + QString(series).replace(u"%d"_s, QString::number(page));
}
