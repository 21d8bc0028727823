#pragma once

#include <QObject>
#include <QString>

//! Whether the device has a network. Unknown counts as reachable everywhere.
class NetworkReachabilityManager : public QObject
{
    Q_OBJECT

public:
    enum class Status {
        Unknown = -1,
        NotReachable = 0,
        ReachableViaWWAN = 1,
        ReachableViaWiFi = 2
    };

    virtual Status networkReachabilityStatus() const = 0;

    bool isReachable() const { return networkReachabilityStatus() != Status::NotReachable; }
    //! What the user is told who wants something that needs a network.
    static QString unreachableText() { return QStringLiteral("没有网络连接..."); }

Q_SIGNALS:
    void statusChanged();
};
