#include "HttpFront.h"

#include "Certificate.h"

#include <httplib.h>

#include <stdexcept>

namespace sandbox {

namespace {

    //! Gives every connection a thread, so that slow answers and idle connections never keep
    //! another one waiting.
    class ThreadPerConnection : public httplib::TaskQueue
    {
    public:
        void enqueue(std::function<void()> task) override { std::thread(std::move(task)).detach(); }
        void shutdown() override { }
    };

    std::unique_ptr<httplib::Server> makeServer(Host host, const Certificate &certificate)
    {
        std::unique_ptr<httplib::Server> server;
        if (host == Host::Tls)
            server = std::make_unique<httplib::SSLServer>(certificate.x509(), certificate.key());
        else
            server = std::make_unique<httplib::Server>();
        // The library's default lets two processes share a port, and each would get half of the
        // connections.
        server->set_socket_options([](socket_t socket) {
            const int yes = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        server->set_tcp_nodelay(true);
        server->set_keep_alive_max_count(100'000);
        server->new_task_queue = [] { return new ThreadPerConnection; };
        return server;
    }

    Request requestOf(Host host, const httplib::Request &http)
    {
        Request request;
        request.host = host;
        request.method = http.method;
        request.path = http.path;
        if (const size_t mark = http.target.find('?'); mark != http.target.npos)
            request.query = http.target.substr(mark + 1);
        for (const auto &[name, value] : http.headers) {
            // The library adds the two ends of the connection as if they had been sent.
            if (name == "REMOTE_ADDR" || name == "REMOTE_PORT" || name == "LOCAL_ADDR"
                || name == "LOCAL_PORT")
                continue;
            request.headers.emplace_back(name, value);
        }
        request.body = http.body;
        request.params = http.params;
        return request;
    }

    void send(Reply reply, httplib::Response &http)
    {
        http.status = reply.status;
        for (const auto &[name, value] : reply.headers)
            http.headers.emplace(name, value);
        if (reply.body.empty())
            return http.set_content(reply.body, reply.contentType);
        const auto body = std::make_shared<const std::string>(std::move(reply.body));
        const size_t end = reply.cut ? body->size() / 2 : body->size();
        http.set_content_provider(body->size(), reply.contentType,
            [body, end](size_t offset, size_t length, httplib::DataSink &sink) {
                if (offset >= end)
                    return false;
                return sink.write(body->data() + offset, std::min(length, end - offset));
            });
    }

} // namespace

HttpFront::HttpFront(int port, const Certificate &certificate)
{
    m_listeners = bindAll(port, certificate);
    m_addresses = Addresses(port);
}

HttpFront::~HttpFront()
{
    for (const Listener &listener : m_listeners)
        listener.server->stop();
}

HttpFront::Listeners HttpFront::bindAll(int &port, const Certificate &certificate)
{
    constexpr int attempts = 50;
    const bool anyPort = port == 0;
    for (int attempt = 0; attempt < (anyPort ? attempts : 1); ++attempt) {
        Listeners listeners;
        for (const Host host : allHosts) {
            auto server = makeServer(host, certificate);
            const std::string address = addressOf(host);
            if (anyPort && listeners.empty())
                port = server->bind_to_any_port(address);
            else if (!server->bind_to_port(address, port))
                break;
            listeners.push_back({host, std::move(server)});
        }
        if (listeners.size() == allHosts.size() && port > 0)
            return listeners;
    }
    throw std::runtime_error(anyPort
            ? "no port is free on all addresses"
            : "port " + std::to_string(port) + " is taken on one of the addresses");
}

void HttpFront::serve(Answer answer)
{
    for (const Listener &listener : m_listeners) {
        const auto handler = [answer, host = listener.host](
                                 const httplib::Request &request, httplib::Response &response) {
            send(answer(requestOf(host, request)), response);
        };
        httplib::Server &server = *listener.server;
        server.Get(".*", handler);
        server.Post(".*", handler);
        server.Put(".*", handler);
        server.Options(".*", handler);
        m_threads.emplace_back([&server] { server.listen_after_bind(); });
    }
}

} // namespace sandbox
