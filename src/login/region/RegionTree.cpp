#include "login/region/RegionTree.h"

#include "model/DictionaryMapper.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QString childrenKey = u"children"_s;

// Reads the nodes of one level; `complete` takes over what the place's own members do not say, and
// tells whether the place is of any use.
template <typename Place, typename Complete>
QList<Place> places(const QJsonValue &nodes, Complete complete)
{
    QList<Place> places;
    for (const QJsonValue &value : nodes.toArray()) {
        const QJsonObject node = value.toObject();
        Place place = DictionaryMapper::model<Place>(node);
        place.index = int(places.size());
        if (complete(place, node) && !place.name.isEmpty())
            places << place;
    }
    return places;
}

bool takeSchool(DistrictModel &district, const QJsonObject &node)
{
    district.school = DictionaryMapper::model<SchoolModel>(node);
    district.name = district.school.full_name;
    return !district.school.site_code.isEmpty();
}

bool takeSchools(CityModel &city, const QJsonObject &node)
{
    city.list = places<DistrictModel>(node[childrenKey], takeSchool);
    return true;
}

bool takeCities(AddressModel &province, const QJsonObject &node)
{
    province.list = places<CityModel>(node[childrenKey], takeSchools);
    return true;
}

}

QList<AddressModel> RegionTree::read(const QJsonArray &tree)
{
    return places<AddressModel>(tree, takeCities);
}
