#pragma once

#include "http/Addresses.h"
#include "http/Message.h"

#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace httplib {
class Server;
}

namespace sandbox {

class Certificate;

//! The listening side: one port on all addresses. It turns what comes over the wire into Request
//! values and Reply values into what goes back; the answering function is called from many threads
//! at once.
class HttpFront
{
public:
    //! Reads what a PUT carries into the request; of more than 1 MiB the start is kept. False when
    //! the client went away first. Other requests come with their bodies.
    enum class Share { Half, Whole };
    using ReadBody = std::function<bool(Share)>;
    //! A PUT whose body it has not read to the end is not answered: its connection is closed.
    using Answer = std::function<Reply(Request &, const ReadBody &)>;

    //! Binds all addresses; throws std::runtime_error when one of them is taken. Port 0 asks for a
    //! port that is free on all of them. Connections are accepted from now on and answered after
    //! serve().
    HttpFront(int port, const Certificate &certificate);
    ~HttpFront();

    const Addresses &addresses() const { return m_addresses; }
    void serve(const Answer &answer);

private:
    struct Listener
    {
        Host host;
        std::unique_ptr<httplib::Server> server;
    };
    using Listeners = std::vector<Listener>;

    static Listeners bindAll(int &port, const Certificate &certificate);

    Addresses m_addresses {0};
    Listeners m_listeners;
    std::vector<std::jthread> m_threads;
};

} // namespace sandbox
