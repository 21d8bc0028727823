#pragma once

#include "platform/push/MqttClient.h"

//! Connections by libmosquitto.
class PushPlugin : public QObject, public MqttClients
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "cn.vant.student.MqttClients")
    Q_INTERFACES(MqttClients)

public:
    PushPlugin();

    std::unique_ptr<MqttClient> make(const MqttAccess &access, qsizetype longestMessage,
        MqttClient::Events events) const override;
};
