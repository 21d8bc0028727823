#pragma once

#include "platform/push/MqttClient.h"

#include <atomic>

struct mosquitto;
struct mosquitto_message;

//! A connection by libmosquitto.
class MosquittoClient : public MqttClient
{
public:
    MosquittoClient(const MqttAccess &access, qsizetype longestMessage, Events events);
    ~MosquittoClient() override;

    QString run() override;
    void disconnect() override;

private:
    int configure();
    static void onConnect(mosquitto *client, void *context, int code);
    static void onSubscribe(
        mosquitto *client, void *context, int mid, int count, const int *grantedQos);
    static void onMessage(mosquitto *client, void *context, const mosquitto_message *message);

    const MqttAccess m_access;
    const qsizetype m_longestMessage;
    const Events m_events;
    mosquitto *const m_client;
    bool m_subscribed = false;
    QString m_refusal;
    std::atomic<bool> m_isDisconnected = false;
};
