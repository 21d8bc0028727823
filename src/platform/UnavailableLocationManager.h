#pragma once

#include "platform/LocationManager.h"

//! Stands where no position source is set up.
class UnavailableLocationManager : public LocationManager
{
public:
    void setEnableHTTPS(bool) override { }
    bool setApiKey(const QString &key) override;
};
