#pragma once

#include "http/Envelope.h"
#include "push/Broker.h"

#include <string>

namespace sandbox {

//! The school's side of push: sends to devices, which are known by their client ids.
class PushService
{
public:
    explicit PushService(Broker &broker)
        : m_broker(broker)
    {
    }

    //! {"to": client id, "payload": address of a page, "title", "body", "id"}: one message, which
    //! the broker has taken when this returns. Title, body and id may be missing; an id is made
    //! then. {"to", "raw"}: the text as it is. Throws std::runtime_error that says what went wrong.
    void send(const Json &message);
    //! {"running": whether the broker shall run}.
    void setRunning(const Json &wish);
    //! {"broker", "tls"}: the addresses; empty without a broker.
    Json description();
    //! The [push] section of a client's configuration.
    std::string toml();

private:
    Broker &m_broker;
};

} // namespace sandbox
