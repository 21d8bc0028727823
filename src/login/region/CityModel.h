#pragma once

#include "login/region/DistrictModel.h"

#include <QList>

//! A city of the region tree.
struct CityModel
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString zipcode MEMBER zipcode)

public:
    QString name;
    QString zipcode;
    int index = 0; //!< its place among the province's
    QList<DistrictModel> list; //!< its schools

    bool operator==(const CityModel &) const = default;
};
