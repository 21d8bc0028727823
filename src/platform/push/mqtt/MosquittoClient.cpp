#include "platform/push/mqtt/MosquittoClient.h"

#include <QDeadlineTimer>
#include <QFile>

#include <mosquitto.h>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr bool cleanSession = false;
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

MosquittoClient::MosquittoClient(const MqttAccess &access, qsizetype longestMessage, Events events)
    : m_access(access)
    , m_longestMessage(longestMessage)
    , m_events(std::move(events))
    , m_client(mosquitto_new(access.clientId.toUtf8().constData(), cleanSession, this))
{
}

MosquittoClient::~MosquittoClient()
{
    mosquitto_destroy(m_client);
}

QString MosquittoClient::run()
{
    if (const int result = configure(); result != MOSQ_ERR_SUCCESS)
        return describe(result);
    int result = mosquitto_connect_async(
        m_client, m_access.host.toUtf8().constData(), m_access.port, keepAliveSeconds);
    const QDeadlineTimer deadline(subscribeTimeout);
    while (result == MOSQ_ERR_SUCCESS && m_refusal.isNull() && !m_isDisconnected) {
        if (!m_subscribed && deadline.hasExpired())
            return u"the broker does not answer"_s;
        const int rest = m_subscribed ? turnMilliseconds : int(deadline.remainingTime()) + 1;
        result = mosquitto_loop(m_client, rest, 1);
    }
    return m_refusal.isNull() ? describe(result) : m_refusal;
}

int MosquittoClient::configure()
{
    if (!m_client)
        return MOSQ_ERR_NOMEM;
    mosquitto_connect_callback_set(m_client, &MosquittoClient::onConnect);
    mosquitto_subscribe_callback_set(m_client, &MosquittoClient::onSubscribe);
    mosquitto_message_callback_set(m_client, &MosquittoClient::onMessage);
    // disconnect() comes from another thread.
    mosquitto_threaded_set(m_client, true);
    mosquitto_int_option(m_client, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V311);
    const int result = mosquitto_username_pw_set(
        m_client, m_access.userName.toUtf8().constData(), m_access.password.toUtf8().constData());
    if (result != MOSQ_ERR_SUCCESS || !m_access.encrypted)
        return result;
    mosquitto_int_option(m_client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (m_access.extraCaFile.isEmpty())
        return MOSQ_ERR_SUCCESS;
    return mosquitto_tls_set(m_client, QFile::encodeName(m_access.extraCaFile).constData(), nullptr,
        nullptr, nullptr, nullptr);
}

void MosquittoClient::onConnect(mosquitto *, void *context, int code)
{
    auto *self = static_cast<MosquittoClient *>(context);
    if (code != 0)
        self->m_refusal = QString::fromLocal8Bit(mosquitto_connack_string(code));
    else if (const int result = mosquitto_subscribe(
                 self->m_client, nullptr, self->m_access.topic.toUtf8().constData(), atLeastOnce);
             result != MOSQ_ERR_SUCCESS)
        self->m_refusal = describe(result);
}

void MosquittoClient::onSubscribe(mosquitto *, void *context, int, int count, const int *grantedQos)
{
    auto *self = static_cast<MosquittoClient *>(context);
    if (count != 1 || grantedQos[0] == refusedSubscription) {
        self->m_refusal = u"the broker refuses the subscription"_s;
        return;
    }
    self->m_subscribed = true;
    self->m_events.subscribed();
}

void MosquittoClient::onMessage(mosquitto *, void *context, const mosquitto_message *message)
{
    auto *self = static_cast<MosquittoClient *>(context);
    const qsizetype length = std::min<qsizetype>(message->payloadlen, self->m_longestMessage + 1);
    self->m_events.message(QByteArray(static_cast<const char *>(message->payload), length));
}

void MosquittoClient::disconnect()
{
    m_isDisconnected = true;
    // Only queues its farewell, which wakes the thread from its waiting.
    mosquitto_disconnect(m_client);
}
