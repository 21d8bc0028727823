#include "web/engine/PageZoom.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double narrowestPage = 320;
// The engine's own.
constexpr double smallest = 0.25;
constexpr double largest = 5;

// Null: as wide as the device.
double wantedWidth(const QString &viewport)
{
    static const QRegularExpression width(
        u"(?:^|[,;\\s])width\\s*=\\s*(\\d+)"_s, QRegularExpression::CaseInsensitiveOption);
    return width.match(viewport).captured(1).toDouble();
}

}

double PageZoom::factor(double width, double textScale, const QString &viewport)
{
    const double wanted = wantedWidth(viewport);
    const double fitting = wanted > 0 ? width / wanted : std::max(1., width / narrowestPage);
    return std::clamp(std::min(std::max(1., textScale), fitting), smallest, largest);
}
