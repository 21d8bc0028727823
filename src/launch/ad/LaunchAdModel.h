#pragma once

#include <QObject>
#include <QString>

//! An advertisement as the platform lists it; empty members where it says nothing.
struct LaunchAdModel
{
    Q_GADGET
    Q_PROPERTY(QString img_url MEMBER img_url)
    Q_PROPERTY(QString link_url MEMBER link_url)

public:
    QString img_url; //!< the picture; may lack the scheme
    QString link_url; //!< where a tap would lead

    bool operator==(const LaunchAdModel &) const = default;
};
