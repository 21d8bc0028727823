#pragma once

#include <QObject>
#include <QVariantMap>

//! The push service's client: registers this device and delivers what the service sends.
class PushClient : public QObject
{
    Q_OBJECT

public:
    //! What may be shown for a message, as flags of registerRemoteNotification.
    enum NotificationType { Badge = 1, Sound = 2, Alert = 4 };

    //! Registers with the service; ends in didRegisterClient or didOccurError, never from inside
    //! this call.
    virtual void startSdk(const QString &appId, const QString &appKey, const QString &appSecret)
        = 0;
    virtual void registerRemoteNotification(int types) = 0;
    virtual void resetBadge() = 0;

Q_SIGNALS:
    //! The service knows this device under the client id.
    void didRegisterClient(const QString &clientId);
    void didOccurError(const QString &error);
    //! A message arrived while the program is in the foreground; its user info.
    void willPresentNotification(const QVariantMap &userInfo);
    //! The user tapped a notification; its user info.
    void didReceiveNotification(const QVariantMap &userInfo);
};
