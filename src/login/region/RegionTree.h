#pragma once

#include "login/region/AddressModel.h"

class QJsonArray;

//! The region tree as the platform sends it: provinces, their cities, and the schools of each.
namespace RegionTree {

//! Leaves out what cannot be chosen: places without a name, and schools without a name or a code.
//! A place without children is one with none.
QList<AddressModel> read(const QJsonArray &tree);

//! The position of the place of that name, -1 for none.
template <typename Place>
int indexOf(const QList<Place> &places, const QString &name)
{
    for (const Place &place : places) {
        if (place.name == name)
            return place.index;
    }
    return -1;
}

}
