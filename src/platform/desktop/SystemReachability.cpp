#include "platform/desktop/SystemReachability.h"

#include <QNetworkInformation>

SystemReachability::SystemReachability(bool hostIsLoopback)
    : m_hostIsLoopback(hostIsLoopback)
{
    if (m_hostIsLoopback || !QNetworkInformation::loadDefaultBackend())
        return;
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
        &NetworkReachabilityManager::statusChanged);
}

NetworkReachabilityManager::Status SystemReachability::networkReachabilityStatus() const
{
    if (m_hostIsLoopback)
        return Status::ReachableViaWiFi;
    const QNetworkInformation *information = QNetworkInformation::instance();
    if (!information)
        return Status::Unknown;
    switch (information->reachability()) {
    case QNetworkInformation::Reachability::Unknown:
        return Status::Unknown;
    case QNetworkInformation::Reachability::Disconnected:
        return Status::NotReachable;
    default:
        return information->transportMedium() == QNetworkInformation::TransportMedium::Cellular
            ? Status::ReachableViaWWAN
            : Status::ReachableViaWiFi;
    }
}
