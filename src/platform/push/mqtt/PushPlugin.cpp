#include "platform/push/mqtt/PushPlugin.h"

#include "platform/push/mqtt/MosquittoClient.h"

#include <mosquitto.h>

PushPlugin::PushPlugin()
{
    mosquitto_lib_init();
}

std::unique_ptr<MqttClient> PushPlugin::make(
    const MqttAccess &access, qsizetype longestMessage, MqttClient::Events events) const
{
    return std::make_unique<MosquittoClient>(access, longestMessage, std::move(events));
}
