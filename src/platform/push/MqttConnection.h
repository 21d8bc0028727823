#pragma once

#include "platform/push/MqttAccess.h"

#include <QObject>

#include <memory>
#include <thread>

class MqttWorker;

//! One connection to a broker, MQTT 3.1.1 with a session that the broker keeps: from the look-up of
//! the host to the end, all on a thread of its own. Owned by the push client; single use.
//!
//! subscribed() comes at most once, then message() any number of times, and ended() once at the end
//! unless this object is destroyed first. Destroying it takes a moment, also while the broker's
//! name is being looked up.
class MqttConnection : public QObject
{
    Q_OBJECT

public:
    //! Messages longer than \a longestMessage come cut off after one more byte.
    MqttConnection(const MqttAccess &access, qsizetype longestMessage);
    ~MqttConnection() override;

Q_SIGNALS:
    //! Messages arrive from now on.
    void subscribed();
    void message(const QByteArray &payload);
    //! Why there is no connection (any more), for the log.
    void ended(const QString &reason);

private:
    std::shared_ptr<MqttWorker> m_worker;
    std::thread m_thread;
};
