#pragma once

#include <QString>

//! The map service's registration.
class LocationManager
{
public:
    virtual ~LocationManager() = default;

    virtual void setEnableHTTPS(bool enabled) = 0;
    //! False when positions are not available.
    virtual bool setApiKey(const QString &key) = 0;
};
