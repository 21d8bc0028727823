#pragma once

#include "login/region/CityModel.h"

//! A province of the region tree.
struct AddressModel
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString zipcode MEMBER zipcode)

public:
    QString name;
    QString zipcode;
    int index = 0; //!< its place in the tree
    QList<CityModel> list; //!< its cities

    bool operator==(const AddressModel &) const = default;
};
