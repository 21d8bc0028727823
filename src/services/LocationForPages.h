#pragma once

#include "platform/LocationManager.h"

#include <QObject>

//! Answers the pages' question where the device is. Owned by the application; the manager must
//! outlive it.
class LocationForPages : public QObject
{
    Q_OBJECT

public:
    explicit LocationForPages(LocationManager *manager);

    //! Before the first question.
    void initLocation();
    //! Asks for one fix with its address; onGetBDLocation follows once.
    void getLocation();

    //! The answer as a JSON text: "code", "msg" and "data".
    static QString answer(const std::optional<Location> &location,
        const std::optional<LocationReGeocode> &reGeocode,
        const std::optional<LocationError> &error);

Q_SIGNALS:
    //! The page's function of this name is to be called with {"result": text}.
    void onGetBDLocation(const QString &text);

private:
    LocationManager *m_manager;
};
