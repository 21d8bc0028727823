#include "upload/preparation/HeifPhoto.h"

#include <QByteArray>

#include <array>

namespace {

constexpr int brandEnd = 12;

}

bool HeifPhoto::isHeif(const QByteArray &start)
{
    if (start.size() < brandEnd || start.sliced(4, 4) != "ftyp")
        return false;
    static const std::array<QByteArray, 10> brands {
        "heic", "heix", "hevc", "hevx", "heim", "heis", "hevm", "hevs", "mif1", "msf1"};
    return std::find(brands.begin(), brands.end(), start.sliced(8, 4)) != brands.end();
}
