#pragma once

#include "platform/services/LocationManager.h"

#include <functional>

//! Answers the pages' question where the device is. Owned by the application; the manager must
//! outlive it.
class LocationForPages
{
public:
    explicit LocationForPages(LocationManager *manager);

    //! Before the first question.
    void initLocation();
    //! Asks for one fix with its address. The page's function onGetBDLocation is to be called with
    //! {"result": text}; once.
    void getLocation(std::function<void(const QString &text)> onGetBDLocation);

    //! The answer as a JSON text: "code", "msg" and "data".
    static QString answer(const std::optional<Location> &location,
        const std::optional<LocationReGeocode> &reGeocode,
        const std::optional<LocationError> &error);

private:
    LocationManager *m_manager;
};
