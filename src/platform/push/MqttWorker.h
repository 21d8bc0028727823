#pragma once

#include "platform/push/MqttConnection.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

struct mosquitto;
struct mosquitto_message;

//! What an MqttConnection's thread does. Shared by both, for the thread may outlive the connection;
//! from stop() on the connection hears nothing more.
class MqttWorker
{
public:
    MqttWorker(const MqttAccess &access, qsizetype longestMessage, MqttConnection *connection);

    //! The thread's whole work.
    void run();
    //! Ends the work; whether it ended in that time.
    bool stop(std::chrono::milliseconds patience);

private:
    using Client = std::unique_ptr<mosquitto, void (*)(mosquitto *)>;

    QString carryOut(mosquitto *client);
    int configure(mosquitto *client) const;
    static void onConnect(mosquitto *client, void *worker, int code);
    static void onSubscribe(
        mosquitto *client, void *worker, int mid, int count, const int *grantedQos);
    static void onMessage(mosquitto *client, void *worker, const mosquitto_message *message);

    bool isStopped();
    template <typename Signal, typename... Arguments>
    void tell(Signal signal, const Arguments &...arguments);

    const MqttAccess m_access;
    const qsizetype m_longestMessage;

    // The thread's alone.
    bool m_subscribed = false;
    QString m_refusal;

    std::mutex m_mutex;
    std::condition_variable m_hasEnded;
    MqttConnection *m_connection; //!< null from stop() on
    mosquitto *m_client = nullptr; //!< while there is one
    bool m_ended = false;
};
