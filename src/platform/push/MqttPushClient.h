#pragma once

#include "platform/push/MqttConnection.h"
#include "platform/push/PushClient.h"
#include "platform/push/PushMessage.h"
#include "platform/push/PushStore.h"

#include <chrono>

class ApplicationBadge;
class DesktopNotifications;
class MainQueue;

//! The push service over MQTT: the client id is this device's, messages arrive on the topic
//! "push/<app id>/<client id>", app key and secret are user name and password. Owned by the
//! application.
//!
//! A connection that is lost or cannot be made is made again by itself after a while, longer each
//! time. Each startSdk ends in one didRegisterClient or didOccurError; a connection that comes
//! later by itself is a didRegisterClient of its own. A message comes once, also when the service
//! delivers it again after a restart; what is no message is dropped with a line in the log.
class MqttPushClient : public PushClient
{
    Q_OBJECT

public:
    struct Settings
    {
        QString broker; //!< mqtt://host[:port] or mqtts://host[:port]; empty: none
        QString extraCaFile; //!< authorities besides the system's; may be empty
        QString storeFile; //!< what is remembered from run to run
    };

    MqttPushClient(const Settings &settings, MainQueue *mainQueue,
        DesktopNotifications *notifications, ApplicationBadge *badge);
    ~MqttPushClient() override;

    void startSdk(const QString &appId, const QString &appKey, const QString &appSecret) override;
    void registerRemoteNotification(int types) override;
    void resetBadge() override;

private:
    void connectToBroker();
    void onSubscribed();
    void onMessage(const QByteArray &payload);
    void onEnded(const QString &reason);
    void present(const PushMessage &message);

    Settings m_settings;
    MainQueue *m_mainQueue;
    DesktopNotifications *m_notifications;
    ApplicationBadge *m_badge;
    PushStore m_store;
    MqttAccess m_access;
    std::unique_ptr<MqttConnection> m_connection;
    std::chrono::seconds m_delay;
    int m_types = 0;
    int m_unread = 0;
    bool m_isSubscribed = false;
    bool m_outcomeIsDue = false;
    std::unique_ptr<QObject> m_retry; //!< takes a waiting attempt with it
};
