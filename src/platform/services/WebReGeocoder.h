#pragma once

#include "platform/services/LocationManager.h"

class HTTPNetwork;

//! Asks the map vendor's web service for the address of a position. A value; what it is given must
//! outlive its answers.
struct WebReGeocoder
{
    //! Called once, with an address or with an error.
    using Answer = std::function<void(const std::optional<LocationReGeocode> &reGeocode,
        const std::optional<LocationError> &error)>;

    void find(const Location &location, Answer answer) const;

    HTTPNetwork *network = nullptr;
    QString address; //!< of the service
    QString key;
    bool httpsOnly = true; //!< but on this device itself
    std::chrono::milliseconds timeout {10'000};
};
