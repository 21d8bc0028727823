#include "launch/ad/AdResolution.h"

#include <algorithm>
#include <array>

namespace {

// The first screen is told from its neighbours by its width; of the others the height alone counts.
constexpr QSize shortScreen {640, 960};
constexpr std::array byHeight {QSize {640, 1136}, QSize {750, 1334}, QSize {1242, 2208},
    QSize {828, 1792}, QSize {1125, 2436}, QSize {1242, 2688}, QSize {1080, 2340},
    QSize {1170, 2532}};
constexpr QSize anythingElse {1284, 2778};

}

QSize AdResolution::forScreen(const QSize &pixels)
{
    if (pixels == shortScreen)
        return shortScreen;
    const auto found = std::find_if(byHeight.begin(), byHeight.end(),
        [&](const QSize &known) { return known.height() == pixels.height(); });
    return found == byHeight.end() ? anythingElse : *found;
}
