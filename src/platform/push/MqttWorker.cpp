#include "platform/push/MqttWorker.h"

#include "platform/modules/Module.h"
#include "platform/push/MqttClient.h"

MqttWorker::MqttWorker(const MqttAccess &access, qsizetype longestMessage, Listener listener)
    : m_access(access)
    , m_longestMessage(longestMessage)
    , m_listener(std::move(listener))
{
}

void MqttWorker::run()
{
    const QString reason = carryOut();
    tell([ended = m_listener.ended, reason] { ended(reason); });

    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_hasEnded.notify_all();
}

QString MqttWorker::carryOut()
{
    const auto *clients = Module::load<MqttClients>("vant_push");
    if (!clients)
        return QStringLiteral("the push module is missing");
    const auto message = [this](const QByteArray &payload) {
        tell([message = m_listener.message, payload] { message(payload); });
    };
    const auto client = clients->make(m_access, m_longestMessage,
        {.subscribed = [this] { tell(m_listener.subscribed); }, .message = message});
    {
        const std::lock_guard lock(m_mutex);
        m_client = client.get();
        if (m_isStopped)
            client->disconnect();
    }
    const QString reason = client->run();
    const std::lock_guard lock(m_mutex);
    m_client = nullptr;
    return reason;
}

bool MqttWorker::stop(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    m_isStopped = true;
    if (m_client)
        m_client->disconnect();
    return m_hasEnded.wait_for(lock, patience, [this] { return m_ended; });
}

// Under the lock, so that the connection is not destroyed meanwhile.
void MqttWorker::tell(std::function<void()> news)
{
    const std::lock_guard lock(m_mutex);
    if (!m_isStopped)
        QMetaObject::invokeMethod(m_listener.context, std::move(news), Qt::QueuedConnection);
}
