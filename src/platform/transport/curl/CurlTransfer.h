#pragma once

#include "platform/transport/HTTPTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <memory>

//! A transfer on its way: one handle of the library.
class CurlTransfer
{
public:
    using Clock = std::chrono::steady_clock;

    //! \a trust: called with \a authorities for each new connection by TLS.
    CurlTransfer(std::shared_ptr<HTTPTransfer> transfer, curl_ssl_ctx_callback trust,
        const void *authorities);
    ~CurlTransfer();
    Q_DISABLE_COPY_MOVE(CurlTransfer)

    CURL *handle() const { return m_easy; }
    const std::shared_ptr<HTTPTransfer> &transfer() const { return m_transfer; }
    //! When it is given up unless it ends, or something arrives or leaves, before.
    Clock::time_point deadline() const
    {
        return std::min(m_lastActivity + m_transfer->limits.silence, m_end);
    }
    //! It has ended by itself.
    void finish(CURLcode result);

private:
    void setBody();
    static size_t onHeader(char *line, size_t size, size_t count, void *transfer);
    static size_t onBody(char *data, size_t size, size_t count, void *transfer);
    static size_t onRead(char *buffer, size_t size, size_t count, void *transfer);
    static int onSeek(void *transfer, curl_off_t offset, int origin);
    bool takeHeader(const QByteArray &line);

    const std::shared_ptr<HTTPTransfer> m_transfer;
    HTTPResponse &m_response;
    CURL *const m_easy;
    curl_slist *m_headers = nullptr;
    std::array<char, CURL_ERROR_SIZE> m_errorText {};
    Clock::time_point m_lastActivity;
    const Clock::time_point m_end; // of the whole time
    qsizetype m_bodySent = 0;
    bool m_bodyIsTooLarge = false;
};
