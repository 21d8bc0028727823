#include "schools/Map.h"

#include "http/Envelope.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace sandbox {

namespace {

    struct MapPlace
    {
        double longitude;
        double latitude;
        std::string_view province;
        std::string_view city; //!< empty for a municipality
        std::string_view district;
        std::string_view street;
        std::string_view area;
    };

    constexpr std::array places {
        MapPlace {118.0894, 24.4798, "福建省", "厦门市", "思明区", "白鹭洲路", "白鹭洲公园"},
        MapPlace {119.2965, 26.0745, "福建省", "福州市", "鼓楼区", "五四路", "温泉公园"},
        MapPlace {112.9388, 28.2282, "湖南省", "长沙市", "岳麓区", "橘洲大桥", ""},
        MapPlace {116.3975, 39.9087, "北京市", "", "东城区", "东长安街", "天安门广场"},
    };

    constexpr double farthestDegrees = 1;

    //! Nothing unless the text is two numbers that are a place on earth.
    std::optional<std::pair<double, double>> parsePlace(const std::string &text)
    {
        double longitude = 0;
        double latitude = 0;
        const char *end = text.data() + text.size();
        const auto first = std::from_chars(text.data(), end, longitude);
        if (first.ec != std::errc() || first.ptr == end || *first.ptr != ',')
            return {};
        const auto second = std::from_chars(first.ptr + 1, end, latitude);
        if (second.ec != std::errc() || second.ptr != end || !(std::abs(longitude) <= 180)
            || !(std::abs(latitude) <= 90))
            return {};
        return std::pair(longitude, latitude);
    }

    const MapPlace *nearest(double longitude, double latitude)
    {
        const MapPlace *best = nullptr;
        double bestDistance = farthestDegrees;
        for (const MapPlace &place : places) {
            const double distance
                = std::hypot(place.longitude - longitude, place.latitude - latitude);
            if (distance < bestDistance) {
                best = &place;
                bestDistance = distance;
            }
        }
        return best;
    }

    Json part(std::string_view text)
    {
        return text.empty() ? Json::array() : Json(text);
    }

    Reply refused(std::string_view info, std::string_view code)
    {
        return jsonReply({{"status", "0"}, {"info", info}, {"infocode", code}});
    }

} // namespace

Reply regeocode(const Request &request)
{
    if (request.param("key") != mapKey)
        return refused("INVALID_USER_KEY", "10001");
    const auto position = parsePlace(request.param("location"));
    if (!position)
        return refused("INVALID_PARAMS", "20000");
    const MapPlace *found = nearest(position->first, position->second);
    const MapPlace place = found ? *found : MapPlace {};
    const Json component {{"country", part(found ? "中国" : "")},
        {"province", part(place.province)}, {"city", part(place.city)},
        {"district", part(place.district)}, {"streetNumber", {{"street", part(place.street)}}}};
    Json areas = Json::array();
    if (!place.area.empty())
        areas.push_back({{"name", place.area}});
    return jsonReply({{"status", "1"}, {"info", "OK"}, {"infocode", "10000"},
        {"regeocode", {{"addressComponent", component}, {"aois", areas}}}});
}

} // namespace sandbox
