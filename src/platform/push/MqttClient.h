#pragma once

#include "platform/push/MqttAccess.h"

#include <QObject>

#include <functional>
#include <memory>

//! One connection to a broker, MQTT 3.1.1 with a session that the broker keeps; single use.
class MqttClient
{
public:
    //! What happens, on the thread that runs.
    struct Events
    {
        std::function<void()> subscribed;
        std::function<void(const QByteArray &payload)> message;
    };

    MqttClient() = default;
    virtual ~MqttClient() = default;
    Q_DISABLE_COPY_MOVE(MqttClient)

    //! From the look-up of the host to the end, and why it ended.
    virtual QString run() = 0;
    //! Ends the run that is under way, or the one to come; from any thread.
    virtual void disconnect() = 0;
};

//! The module that makes them.
class MqttClients
{
public:
    MqttClients() = default;
    virtual ~MqttClients() = default;
    Q_DISABLE_COPY_MOVE(MqttClients)

    //! Messages longer than \a longestMessage come cut off after one more byte.
    virtual std::unique_ptr<MqttClient> make(
        const MqttAccess &access, qsizetype longestMessage, MqttClient::Events events) const = 0;
};

Q_DECLARE_INTERFACE(MqttClients, "cn.vant.student.MqttClients")
