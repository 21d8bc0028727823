#pragma once

#include "platform/push/MqttAccess.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

class MqttClient;

//! The work of a connection's thread. Shared by both, for the thread may outlive the connection;
//! from stop() on the connection hears nothing more.
class MqttWorker
{
public:
    //! Who is told, and how: called on the thread of \a context, later.
    struct Listener
    {
        QObject *context;
        std::function<void()> subscribed;
        std::function<void(const QByteArray &payload)> message;
        std::function<void(const QString &reason)> ended;
    };

    MqttWorker(const MqttAccess &access, qsizetype longestMessage, Listener listener);

    //! The thread's whole work.
    void run();
    //! Ends the work; whether it ended in that time.
    bool stop(std::chrono::milliseconds patience);

private:
    QString carryOut();
    void tell(std::function<void()> news);

    const MqttAccess m_access;
    const qsizetype m_longestMessage;
    const Listener m_listener;

    std::mutex m_mutex;
    std::condition_variable m_hasEnded;
    bool m_isStopped = false;
    MqttClient *m_client = nullptr; //!< while there is one
    bool m_ended = false;
};
