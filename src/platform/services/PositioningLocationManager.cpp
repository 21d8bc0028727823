#include "platform/services/PositioningLocationManager.h"

#include "platform/Logging.h"
#include "platform/time/MainQueue.h"

#include <QGeoPositionInfoSource>
#include <QGuiApplication>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

const LocationError unavailable {LocationError::LocateFailed, QStringLiteral("定位服务不可用")};
const LocationError positionDenied {LocationError::Denied, QStringLiteral("没有定位权限")};
const LocationError timedOut {LocationError::TimeOut, QStringLiteral("定位超时")};

}

PositioningLocationManager::PositioningLocationManager(
    MainQueue *queue, HTTPNetwork *network, const QString &regeocodeUrl, const Provider &provider)
    : m_queue(queue)
    , m_reGeocoder {.network = network, .address = regeocodeUrl, .key = {}}
    , m_provider(provider)
{
}

bool PositioningLocationManager::setApiKey(const QString &key)
{
    m_reGeocoder.key = key;
    return true;
}

void PositioningLocationManager::updatePrivacy(bool shown, bool containsInfo, bool agreed)
{
    m_privacyAgreed = shown && containsInfo && agreed;
}

void PositioningLocationManager::setLocationTimeout(std::chrono::milliseconds timeout)
{
    m_locationTimeout = timeout;
}

void PositioningLocationManager::setReGeocodeTimeout(std::chrono::milliseconds timeout)
{
    m_reGeocoder.timeout = timeout;
}

void PositioningLocationManager::requestLocationWithReGeocode(Completion completion)
{
    const quint64 request = ++m_lastRequest;
    m_waiting.insert(request, std::move(completion));
    QMetaObject::invokeMethod(
        this,
        [this, request] {
            if (!m_privacyAgreed)
                fail(request, positionDenied);
            else if (!prepareSource())
                fail(request, unavailable);
            else
                requestUpdate();
        },
        Qt::QueuedConnection);
    m_queue->after(m_locationTimeout, this, [this, request] { fail(request, timedOut); });
}

bool PositioningLocationManager::prepareSource()
{
    if (m_source)
        return true;
    QVariantMap parameters = m_provider.parameters;
    // The system's location service grants access by the name of the program's desktop file.
    parameters.insert(u"desktopId"_s, QGuiApplication::desktopFileName());
    m_source = m_provider.name.isEmpty()
        ? QGeoPositionInfoSource::createDefaultSource(parameters, this)
        : QGeoPositionInfoSource::createSource(m_provider.name, parameters, this);
    if (!m_source) {
        qCWarning(lcPlatform) << "there is no source of positions";
        return false;
    }
    // Without a wish the location service tells the country alone.
    m_source->setPreferredPositioningMethods(QGeoPositionInfoSource::AllPositioningMethods);
    connect(m_source, &QGeoPositionInfoSource::positionUpdated, this,
        &PositioningLocationManager::positionUpdated);
    connect(m_source, &QGeoPositionInfoSource::errorOccurred, this,
        &PositioningLocationManager::errorOccurred);
    return true;
}

// While one is under way the source takes no second; its fix answers all.
void PositioningLocationManager::requestUpdate()
{
    if (!m_waiting.isEmpty())
        m_source->requestUpdate(int(m_locationTimeout.count()));
}

void PositioningLocationManager::positionUpdated(const QGeoPositionInfo &info)
{
    if (!info.isValid())
        return requestUpdate();
    const Location location {info.coordinate().latitude(), info.coordinate().longitude()};
    const auto waiting = std::exchange(m_waiting, {});
    for (const Completion &completion : waiting) {
        m_reGeocoder.find(location,
            [self = QPointer(this), location, completion](
                const std::optional<LocationReGeocode> &reGeocode,
                const std::optional<LocationError> &error) {
                if (self)
                    completion(location, reGeocode, error);
            });
    }
}

void PositioningLocationManager::errorOccurred(int error)
{
    switch (error) {
    case QGeoPositionInfoSource::UpdateTimeoutError:
        // Each request has a time-out of its own, and a later one still waits.
        QMetaObject::invokeMethod(
            this, &PositioningLocationManager::requestUpdate, Qt::QueuedConnection);
        break;
    case QGeoPositionInfoSource::AccessError:
        failAll(positionDenied);
        break;
    case QGeoPositionInfoSource::ClosedError:
    case QGeoPositionInfoSource::UnknownSourceError:
        failAll(unavailable);
        break;
    }
}

void PositioningLocationManager::fail(quint64 request, const LocationError &error)
{
    if (const Completion completion = m_waiting.take(request))
        completion({}, {}, error);
}

void PositioningLocationManager::failAll(const LocationError &error)
{
    const auto waiting = std::exchange(m_waiting, {});
    for (const Completion &completion : waiting)
        completion({}, {}, error);
}
