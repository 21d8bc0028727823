#include "platform/push/MqttWorker.h"

#include <QDeadlineTimer>
#include <QFile>

#include <mosquitto.h>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int atLeastOnce = 1;
constexpr int keepAliveSeconds = 60;
constexpr int turnMilliseconds = 30'000;
// For a broker that takes the connection and never says a word.
constexpr auto subscribeTimeout = 10s;
constexpr int refusedSubscription = 0x80;

QString describe(int result)
{
    return QString::fromLocal8Bit(
        result == MOSQ_ERR_ERRNO ? std::strerror(errno) : mosquitto_strerror(result));
}

}

MqttWorker::MqttWorker(const MqttAccess &access, qsizetype longestMessage, Listener listener)
    : m_access(access)
    , m_longestMessage(longestMessage)
    , m_listener(std::move(listener))
{
    [[maybe_unused]] static const int ready = mosquitto_lib_init();
}

void MqttWorker::run()
{
    const bool cleanSession = false;
    const Client client(mosquitto_new(m_access.clientId.toUtf8().constData(), cleanSession, this),
        &mosquitto_destroy);
    {
        const std::lock_guard lock(m_mutex);
        m_client = client.get();
    }
    const QString reason = carryOut(client.get());
    tell([ended = m_listener.ended, reason] { ended(reason); });

    const std::lock_guard lock(m_mutex);
    m_client = nullptr;
    m_ended = true;
    m_hasEnded.notify_all();
}

QString MqttWorker::carryOut(mosquitto *client)
{
    if (const int result = configure(client); result != MOSQ_ERR_SUCCESS)
        return describe(result);
    int result = mosquitto_connect_async(
        client, m_access.host.toUtf8().constData(), m_access.port, keepAliveSeconds);
    const QDeadlineTimer deadline(subscribeTimeout);
    while (result == MOSQ_ERR_SUCCESS && m_refusal.isNull() && !isStopped()) {
        if (!m_subscribed && deadline.hasExpired())
            return u"the broker does not answer"_s;
        const int rest = m_subscribed ? turnMilliseconds : int(deadline.remainingTime()) + 1;
        result = mosquitto_loop(client, rest, 1);
    }
    return m_refusal.isNull() ? describe(result) : m_refusal;
}

int MqttWorker::configure(mosquitto *client) const
{
    if (!client)
        return MOSQ_ERR_NOMEM;
    mosquitto_connect_callback_set(client, &MqttWorker::onConnect);
    mosquitto_subscribe_callback_set(client, &MqttWorker::onSubscribe);
    mosquitto_message_callback_set(client, &MqttWorker::onMessage);
    // stop() calls from another thread.
    mosquitto_threaded_set(client, true);
    mosquitto_int_option(client, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V311);
    const int result = mosquitto_username_pw_set(
        client, m_access.userName.toUtf8().constData(), m_access.password.toUtf8().constData());
    if (result != MOSQ_ERR_SUCCESS || !m_access.encrypted)
        return result;
    mosquitto_int_option(client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (m_access.extraCaFile.isEmpty())
        return MOSQ_ERR_SUCCESS;
    return mosquitto_tls_set(client, QFile::encodeName(m_access.extraCaFile).constData(), nullptr,
        nullptr, nullptr, nullptr);
}

void MqttWorker::onConnect(mosquitto *client, void *worker, int code)
{
    auto *self = static_cast<MqttWorker *>(worker);
    if (code != 0)
        self->m_refusal = QString::fromLocal8Bit(mosquitto_connack_string(code));
    else if (const int result = mosquitto_subscribe(
                 client, nullptr, self->m_access.topic.toUtf8().constData(), atLeastOnce);
             result != MOSQ_ERR_SUCCESS)
        self->m_refusal = describe(result);
}

void MqttWorker::onSubscribe(mosquitto *, void *worker, int, int count, const int *grantedQos)
{
    auto *self = static_cast<MqttWorker *>(worker);
    if (count != 1 || grantedQos[0] == refusedSubscription) {
        self->m_refusal = u"the broker refuses the subscription"_s;
        return;
    }
    self->m_subscribed = true;
    self->tell(self->m_listener.subscribed);
}

void MqttWorker::onMessage(mosquitto *, void *worker, const mosquitto_message *message)
{
    auto *self = static_cast<MqttWorker *>(worker);
    const qsizetype length = std::min<qsizetype>(message->payloadlen, self->m_longestMessage + 1);
    self->tell([tell = self->m_listener.message,
                   payload = QByteArray(static_cast<const char *>(message->payload), length)] {
        tell(payload);
    });
}

bool MqttWorker::isStopped()
{
    const std::lock_guard lock(m_mutex);
    return m_isStopped;
}

bool MqttWorker::stop(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    m_isStopped = true;
    // Only queues its farewell, which wakes the thread from its waiting.
    if (m_client)
        mosquitto_disconnect(m_client);
    return m_hasEnded.wait_for(lock, patience, [this] { return m_ended; });
}

// Under the lock, so that the connection is not destroyed meanwhile.
void MqttWorker::tell(std::function<void()> news)
{
    const std::lock_guard lock(m_mutex);
    if (!m_isStopped)
        QMetaObject::invokeMethod(m_listener.context, std::move(news), Qt::QueuedConnection);
}
