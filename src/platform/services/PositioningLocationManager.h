#pragma once

#include "platform/services/LocationManager.h"
#include "platform/services/WebReGeocoder.h"

#include <QHash>
#include <QObject>
#include <QVariantMap>

class MainQueue;
class QGeoPositionInfo;
class QGeoPositionInfoSource;

//! Positions from the system's source, and their addresses from the map vendor's web service. Owned
//! by the application; what it is given must outlive it. Completions that have not come when it
//! goes are dropped.
class PositioningLocationManager : public QObject, public LocationManager
{
    Q_OBJECT

public:
    //! A positioning plug-in and its parameters; the empty name takes the system's best.
    struct Provider
    {
        QString name;
        QVariantMap parameters;
    };

    PositioningLocationManager(MainQueue *queue, HTTPNetwork *network, const QString &regeocodeUrl,
        const Provider &provider = {});

    void setEnableHTTPS(bool enabled) override { m_reGeocoder.httpsOnly = enabled; }
    bool setApiKey(const QString &key) override;
    void updatePrivacy(bool shown, bool containsInfo, bool agreed) override;
    void setLocationTimeout(std::chrono::milliseconds timeout) override;
    void setReGeocodeTimeout(std::chrono::milliseconds timeout) override;
    void requestLocationWithReGeocode(Completion completion) override;

private:
    bool prepareSource();
    void requestUpdate();
    void positionUpdated(const QGeoPositionInfo &info);
    //! \a error: the source's own.
    void errorOccurred(int error);
    void fail(quint64 request, const LocationError &error);
    void failAll(const LocationError &error);

    MainQueue *m_queue;
    WebReGeocoder m_reGeocoder;
    Provider m_provider;
    std::chrono::milliseconds m_locationTimeout {10'000};
    bool m_privacyAgreed = false;
    QGeoPositionInfoSource *m_source = nullptr; // made with the first request
    QHash<quint64, Completion> m_waiting; // for a fix
    quint64 m_lastRequest = 0;
};
