#pragma once

#include "platform/transport/HTTPRequest.h"
#include "platform/transport/HTTPTypes.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>

//! One message to a server and its answer, redirections not followed. Made on the main thread,
//! carried out on the network thread, and from its end on the main thread's again.
class HTTPTransfer
{
public:
    using Clock = std::chrono::steady_clock;
    //! On the network thread, once.
    using Done = std::function<void()>;

    //! Numbers beside the library's own, which end below 200.
    static constexpr int bodyTooLarge = 1003;
    static constexpr int cancelled = 1004;

    HTTPTransfer(HTTPRequest request, const HTTPLimits &limits, Done done);
    ~HTTPTransfer();
    HTTPTransfer(const HTTPTransfer &) = delete;
    HTTPTransfer &operator=(const HTTPTransfer &) = delete;

    // For the network thread.
    CURL *prepare(curl_ssl_ctx_callback trust, void *authorities);
    //! Null before prepare().
    CURL *handle() const { return m_easy; }
    //! When it is given up unless it ends, or something arrives or leaves, before.
    Clock::time_point deadline() const
    {
        return std::min(m_lastActivity + m_limits.silence, m_end);
    }
    //! It has ended by itself.
    void finish(CURLcode result);
    //! It is ended.
    void finish(int error, const QString &description);

    // After the end.
    const HTTPResponse &response() const { return m_response; }
    HTTPResponse takeResponse() { return std::move(m_response); }
    const HTTPError &error() const { return m_error; }

private:
    void setBody();
    static size_t onHeader(char *line, size_t size, size_t count, void *transfer);
    static size_t onBody(char *data, size_t size, size_t count, void *transfer);
    static size_t onRead(char *buffer, size_t size, size_t count, void *transfer);
    static int onSeek(void *transfer, curl_off_t offset, int origin);
    bool takeHeader(const QByteArray &line);

    const HTTPRequest m_request;
    const HTTPLimits m_limits;
    const Done m_done;
    CURL *m_easy = nullptr;
    curl_slist *m_headers = nullptr;
    std::array<char, CURL_ERROR_SIZE> m_errorText {};
    Clock::time_point m_lastActivity;
    const Clock::time_point m_end; // of the whole time
    qsizetype m_bodySent = 0;
    bool m_bodyIsTooLarge = false;
    HTTPResponse m_response;
    HTTPError m_error;
};
