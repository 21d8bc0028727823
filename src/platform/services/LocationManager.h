#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <optional>

//! A position on the earth, in degrees.
struct Location
{
    double latitude = 0;
    double longitude = 0;
};

//! The address of a position; what the map does not know is null.
struct LocationReGeocode
{
    QString country;
    QString province;
    QString city;
    QString district;
    QString street;
    QString aoiName; //!< the area of interest that holds the position
};

//! Why there is no position, or no address of it.
struct LocationError
{
    enum Code { Unknown = 1, LocateFailed, ReGeocodeFailed, TimeOut, Denied };

    Code code = Unknown;
    QString localizedDescription; //!< for the person
};

//! Tells where the device is.
class LocationManager
{
public:
    //! An error with a location: its address could not be had. Called once.
    using Completion = std::function<void(const std::optional<Location> &location,
        const std::optional<LocationReGeocode> &reGeocode,
        const std::optional<LocationError> &error)>;

    virtual ~LocationManager() = default;

    virtual void setEnableHTTPS(bool enabled) = 0;
    //! False when positions are not available.
    virtual bool setApiKey(const QString &key) = 0;
    //! Whether the person was shown the privacy notice, with what concerns positions in it, and
    //! agreed. Requests without fail.
    virtual void updatePrivacy(bool shown, bool containsInfo, bool agreed) = 0;
    virtual void setLocationTimeout(std::chrono::milliseconds timeout) = 0;
    virtual void setReGeocodeTimeout(std::chrono::milliseconds timeout) = 0;
    //! One fix and its address. Requests may overlap; each is answered.
    virtual void requestLocationWithReGeocode(Completion completion) = 0;
};
