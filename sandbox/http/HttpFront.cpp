#include "http/HttpFront.h"

#include "http/Certificate.h"
#include "http/Connection.h"
#include "http/OpenFile.h"

#include <httplib.h>

#include <array>
#include <stdexcept>

#include <fcntl.h>

namespace sandbox {

namespace {

    constexpr int ok = 200;
    constexpr int noContent = 204;
    constexpr int statusByRange = -1; //!< the library's: 206 for a part of the file, else 200

    //! Pieces of a body that dribbles.
    constexpr size_t dribbles = 16;

    //! Larger bodies are read to their end and cut off here.
    constexpr size_t mostPutBytes = 1024UL * 1024;

    //! Between two calls of an upload lies the transfer of a part, over a line that may be slow.
    constexpr time_t keepAliveSeconds = 60;

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
        server->set_keep_alive_timeout(keepAliveSeconds);
        server->new_task_queue = [] { return new ThreadPerConnection; };
        return server;
    }

    Request requestOf(Host host, const httplib::Request &http)
    {
        Request request;
        request.host = host;
        request.peer = http.remote_addr + ":" + std::to_string(http.remote_port);
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

    //! Bytes that are sent as the connection takes them.
    using Source = std::function<size_t(char *to, size_t most, size_t offset)>;

    void sendFrom(Source source, size_t size, const Reply &reply, httplib::Response &http)
    {
        if (size == 0)
            return http.set_content("", reply.contentType);
        const size_t end = reply.cut ? size / 2 : size;
        const size_t mostAtOnce = reply.dribble.count() > 0 ? size / dribbles + 1 : size;
        http.set_content_provider(size, reply.contentType,
            [source = std::move(source), end, mostAtOnce, pause = reply.dribble](
                size_t offset, size_t length, httplib::DataSink &sink) {
                std::array<char, 65536> piece;
                if (offset >= end)
                    return false;
                std::this_thread::sleep_for(pause);
                const size_t most = std::min({length, end - offset, piece.size(), mostAtOnce});
                const size_t got = source(piece.data(), most, offset);
                return got > 0 && sink.write(piece.data(), got);
            });
    }

    void send(Reply reply, const httplib::Request &request, httplib::Response &http)
    {
        if (reply.lost)
            return hangUp(request, reply.reset ? Ending::Reset : Ending::InOrder);
        http.status = reply.status;
        for (const auto &[name, value] : reply.headers)
            http.headers.emplace(name, value);
        if (reply.status == noContent)
            return;
        if (reply.file.empty()) {
            const auto body = std::make_shared<const std::string>(std::move(reply.body));
            const auto source = [body](char *to, size_t most, size_t offset) {
                return body->copy(to, most, offset);
            };
            return sendFrom(source, body->size(), reply, http);
        }
        if (reply.status == ok)
            http.status = statusByRange;
        const auto file = std::make_shared<const OpenFile>(reply.file, O_RDONLY);
        const auto source = [file](char *to, size_t most, size_t offset) {
            return file->read(to, most, off_t(offset));
        };
        sendFrom(source, file->size(), reply, http);
    }

    //! Answers a request whose body is still to be read.
    void answerUnread(const HttpFront::Answer &answer, Request request,
        const httplib::Request &http, const httplib::ContentReader &reader,
        httplib::Response &response)
    {
        bool whole = false;
        const auto readBody = [&](HttpFront::Share share) {
            const size_t half = http.get_header_value<uint64_t>("Content-Length") / 2;
            size_t got = 0;
            whole = reader([&](const char *data, size_t size) {
                got += size;
                if (request.body.size() <= mostPutBytes)
                    request.body.append(data, size);
                return share == HttpFront::Share::Whole || got < half;
            });
            return whole;
        };
        Reply reply = answer(request, readBody);
        // What has not been read would be taken for the next request.
        reply.lost = reply.lost || !whole;
        send(std::move(reply), http, response);
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

void HttpFront::serve(const Answer &answer)
{
    for (const Listener &listener : m_listeners) {
        const auto handler = [answer, host = listener.host](
                                 const httplib::Request &http, httplib::Response &response) {
            Request request = requestOf(host, http);
            send(answer(request, [](Share) { return true; }), http, response);
        };
        httplib::Server &server = *listener.server;
        server.Get(".*", handler);
        server.Post(".*", handler);
        server.Put(".*",
            [answer, host = listener.host](const httplib::Request &http,
                httplib::Response &response, const httplib::ContentReader &reader) {
                answerUnread(answer, requestOf(host, http), http, reader, response);
            });
        server.Options(".*", handler);
        m_threads.emplace_back([&server] { server.listen_after_bind(); });
    }
}

} // namespace sandbox
