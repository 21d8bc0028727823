#pragma once

#include "model/SchoolModel.h"

//! What lies below a city in the region tree: a school.
struct DistrictModel
{
    Q_GADGET
    Q_PROPERTY(QString zipcode MEMBER zipcode)

public:
    QString name; //!< the school's full name
    QString zipcode;
    int index = 0; //!< its place among the city's
    SchoolModel school;

    bool operator==(const DistrictModel &) const = default;
};
