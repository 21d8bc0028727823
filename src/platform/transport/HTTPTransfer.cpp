#include "platform/transport/HTTPTransfer.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int lastInterimStatus = 199;
constexpr long largestSendBuffer = 512 * 1024; // bytes; what a part of a file goes out in

}

HTTPTransfer::HTTPTransfer(HTTPRequest request, const HTTPLimits &limits, Done done)
    : m_request(std::move(request))
    , m_limits(limits)
    , m_done(std::move(done))
    , m_lastActivity(Clock::now())
    // Not the library's to measure: it does not while a transfer waits for a connection.
    , m_end(m_limits.whole.count() > 0 ? m_lastActivity + m_limits.whole : Clock::time_point::max())
{
}

HTTPTransfer::~HTTPTransfer()
{
    curl_slist_free_all(m_headers);
    curl_easy_cleanup(m_easy);
}

CURL *HTTPTransfer::prepare(curl_ssl_ctx_callback trust, void *authorities)
{
    m_easy = curl_easy_init();
    curl_easy_setopt(m_easy, CURLOPT_PRIVATE, this);
    curl_easy_setopt(m_easy, CURLOPT_ERRORBUFFER, m_errorText.data());
    curl_easy_setopt(m_easy, CURLOPT_NOSIGNAL, 1L);
    // A name's look-up cannot be cut short; its end must not wait for it, nor must all others.
    curl_easy_setopt(m_easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(m_easy, CURLOPT_PROTOCOLS_STR, "http,https");
    const QByteArray url = m_request.url.toEncoded(QUrl::RemoveFragment | QUrl::RemoveUserInfo);
    curl_easy_setopt(m_easy, CURLOPT_URL, url.constData());
    curl_easy_setopt(m_easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(m_easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_2TLS));
    curl_easy_setopt(m_easy, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(m_easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(m_easy, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(m_easy, CURLOPT_SSL_CTX_FUNCTION, trust);
    curl_easy_setopt(m_easy, CURLOPT_SSL_CTX_DATA, authorities);
    curl_easy_setopt(m_easy, CURLOPT_HEADERFUNCTION, &HTTPTransfer::onHeader);
    curl_easy_setopt(m_easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_WRITEFUNCTION, &HTTPTransfer::onBody);
    curl_easy_setopt(m_easy, CURLOPT_WRITEDATA, this);
    for (const auto &[name, value] : m_request.headers) {
        // The library writes them as they are.
        if (!fitsAHeader(name) || !fitsAHeader(value))
            continue;
        // An empty value must be written all the same, which the library does for ";".
        m_headers = curl_slist_append(m_headers,
            value.trimmed().isEmpty() ? QByteArray(name + ';').constData()
                                      : QByteArray(name + ": " + value).constData());
    }
    if (m_request.method != HTTPRequest::Method::Get)
        setBody();
    curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, m_headers);
    m_lastActivity = Clock::now();
    return m_easy;
}

// The library sends a message a second time where a kept connection closes unanswered. It cannot
// where the body's first bytes are gone, and a message without a body gets its own connection.
void HTTPTransfer::setBody()
{
    const bool isPut = m_request.method == HTTPRequest::Method::Put;
    const auto size = curl_off_t(m_request.body.size());
    if (isPut) {
        curl_easy_setopt(m_easy, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(m_easy, CURLOPT_INFILESIZE_LARGE, size);
    } else {
        curl_easy_setopt(m_easy, CURLOPT_POST, 1L);
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDSIZE_LARGE, size);
    }
    curl_easy_setopt(m_easy, CURLOPT_READFUNCTION, &HTTPTransfer::onRead);
    curl_easy_setopt(m_easy, CURLOPT_READDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_SEEKFUNCTION, &HTTPTransfer::onSeek);
    curl_easy_setopt(m_easy, CURLOPT_SEEKDATA, this);
    curl_easy_setopt(
        m_easy, CURLOPT_UPLOAD_BUFFERSIZE, std::clamp(long(size), 16 * 1024L, largestSendBuffer));
    if (size == 0)
        curl_easy_setopt(m_easy, CURLOPT_FRESH_CONNECT, 1L);
    // Servers are known that wait for the body meanwhile.
    m_headers = curl_slist_append(m_headers, "Expect:");
}

void HTTPTransfer::finish(CURLcode result)
{
    long status = 0;
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    m_response.statusCode = int(status);
    if (m_bodyIsTooLarge)
        return finish(bodyTooLarge, QStringLiteral("body above %1 bytes").arg(m_limits.bodySize));
    if (result == CURLE_OK)
        return m_done();
    finish(int(result),
        QString::fromLocal8Bit(
            m_errorText[0] != '\0' ? m_errorText.data() : curl_easy_strerror(result)));
}

void HTTPTransfer::finish(int error, const QString &description)
{
    m_error = {error, description};
    m_done();
}

size_t HTTPTransfer::onHeader(char *line, size_t size, size_t count, void *transfer)
{
    const QByteArray text(line, qsizetype(size * count));
    return static_cast<HTTPTransfer *>(transfer)->takeHeader(text.trimmed()) ? size * count : 0;
}

bool HTTPTransfer::takeHeader(const QByteArray &line)
{
    m_lastActivity = Clock::now();
    // A further message: what came before was an interim one.
    if (line.startsWith("HTTP/")) {
        m_response.headers.clear();
        return true;
    }
    if (const qsizetype colon = line.indexOf(':'); colon > 0)
        m_response.headers.append({line.first(colon), line.sliced(colon + 1).trimmed()});
    if (!line.isEmpty())
        return true;
    long status = 0;
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    m_bodyIsTooLarge = status > lastInterimStatus
        && m_response.header("Content-Length").toLongLong() > m_limits.bodySize;
    return !m_bodyIsTooLarge;
}

size_t HTTPTransfer::onBody(char *data, size_t size, size_t count, void *transfer)
{
    auto *self = static_cast<HTTPTransfer *>(transfer);
    self->m_lastActivity = Clock::now();
    self->m_response.body.append(data, qsizetype(size * count));
    self->m_bodyIsTooLarge = self->m_response.body.size() > self->m_limits.bodySize;
    return self->m_bodyIsTooLarge ? 0 : size * count;
}

size_t HTTPTransfer::onRead(char *buffer, size_t size, size_t count, void *transfer)
{
    auto *self = static_cast<HTTPTransfer *>(transfer);
    self->m_lastActivity = Clock::now();
    const qsizetype left = self->m_request.body.size() - self->m_bodySent;
    const qsizetype length = std::min(left, qsizetype(size * count));
    std::memcpy(buffer, self->m_request.body.constData() + self->m_bodySent, size_t(length));
    self->m_bodySent += length;
    return size_t(length);
}

int HTTPTransfer::onSeek(void *transfer, curl_off_t, int)
{
    return static_cast<HTTPTransfer *>(transfer)->m_bodySent == 0 ? CURL_SEEKFUNC_OK
                                                                  : CURL_SEEKFUNC_FAIL;
}
