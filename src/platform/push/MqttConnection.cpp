#include "platform/push/MqttConnection.h"

#include "platform/push/MqttWorker.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto endPatience = 800ms;

}

MqttConnection::MqttConnection(const MqttAccess &access, qsizetype longestMessage)
    : m_worker(std::make_shared<MqttWorker>(access, longestMessage,
        MqttWorker::Listener {
            .context = this,
            .subscribed = [this] { Q_EMIT subscribed(); },
            .message = [this](const QByteArray &payload) { Q_EMIT message(payload); },
            .ended = [this](const QString &reason) { Q_EMIT ended(reason); },
        }))
    , m_thread([worker = m_worker] { worker->run(); })
{
}

MqttConnection::~MqttConnection()
{
    // A name's look-up cannot be cut short; what the thread uses is its own, so it may be left.
    if (m_worker->stop(endPatience))
        m_thread.join();
    else
        m_thread.detach();
}
