#include "platform/transport/curl/CurlTransfer.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int lastInterimStatus = 199;
constexpr long largestSendBuffer = 512 * 1024; // bytes; what a part of a file goes out in

CurlTransfer::Clock::time_point endOf(const HTTPTransfer &transfer)
{
    using Clock = CurlTransfer::Clock;
    const auto whole = transfer.limits.whole;
    return whole.count() > 0 ? Clock::now() + whole : Clock::time_point::max();
}

}

CurlTransfer::CurlTransfer(
    std::shared_ptr<HTTPTransfer> transfer, curl_ssl_ctx_callback trust, const void *authorities)
    : m_transfer(std::move(transfer))
    , m_response(m_transfer->response)
    , m_easy(curl_easy_init())
    , m_lastActivity(Clock::now())
    // Not the library's to measure: it does not while a transfer waits for a connection.
    , m_end(endOf(*m_transfer))
{
    const HTTPRequest &request = m_transfer->request;
    curl_easy_setopt(m_easy, CURLOPT_ERRORBUFFER, m_errorText.data());
    curl_easy_setopt(m_easy, CURLOPT_NOSIGNAL, 1L);
    // A name's look-up cannot be cut short; its end must not wait for it, nor must all others.
    curl_easy_setopt(m_easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(m_easy, CURLOPT_PROTOCOLS_STR, "http,https");
    const QByteArray url = request.url.toEncoded(QUrl::RemoveFragment | QUrl::RemoveUserInfo);
    curl_easy_setopt(m_easy, CURLOPT_URL, url.constData());
    curl_easy_setopt(m_easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(m_easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_2TLS));
    curl_easy_setopt(m_easy, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(m_easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(m_easy, CURLOPT_SSLVERSION, long(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(m_easy, CURLOPT_SSL_CTX_FUNCTION, trust);
    curl_easy_setopt(m_easy, CURLOPT_SSL_CTX_DATA, const_cast<void *>(authorities));
    if (request.isDirect)
        curl_easy_setopt(m_easy, CURLOPT_PROXY, "");
    curl_easy_setopt(m_easy, CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader);
    curl_easy_setopt(m_easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody);
    curl_easy_setopt(m_easy, CURLOPT_WRITEDATA, this);
    for (const auto &[name, value] : request.headers) {
        // The library writes them as they are.
        if (!fitsAHeader(name) || !fitsAHeader(value))
            continue;
        // An empty value must be written all the same, which the library does for ";".
        m_headers = curl_slist_append(m_headers,
            value.trimmed().isEmpty() ? QByteArray(name + ';').constData()
                                      : QByteArray(name + ": " + value).constData());
    }
    if (request.method != HTTPRequest::Method::Get)
        setBody();
    curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, m_headers);
}

CurlTransfer::~CurlTransfer()
{
    curl_slist_free_all(m_headers);
    curl_easy_cleanup(m_easy);
}

// The library sends a message a second time where a kept connection closes unanswered. It cannot
// where the body's first bytes are gone. A message without a body gets its own connection, and
// HTTP/1.1: over HTTP/2 a server can refuse it, and is then asked five times more.
void CurlTransfer::setBody()
{
    const bool isPut = m_transfer->request.method == HTTPRequest::Method::Put;
    const auto size = curl_off_t(m_transfer->request.body.size());
    if (isPut) {
        curl_easy_setopt(m_easy, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(m_easy, CURLOPT_INFILESIZE_LARGE, size);
    } else {
        curl_easy_setopt(m_easy, CURLOPT_POST, 1L);
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDSIZE_LARGE, size);
    }
    curl_easy_setopt(m_easy, CURLOPT_READFUNCTION, &CurlTransfer::onRead);
    curl_easy_setopt(m_easy, CURLOPT_READDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_SEEKFUNCTION, &CurlTransfer::onSeek);
    curl_easy_setopt(m_easy, CURLOPT_SEEKDATA, this);
    curl_easy_setopt(
        m_easy, CURLOPT_UPLOAD_BUFFERSIZE, std::clamp(long(size), 16 * 1024L, largestSendBuffer));
    if (size == 0) {
        curl_easy_setopt(m_easy, CURLOPT_FRESH_CONNECT, 1L);
        curl_easy_setopt(m_easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    }
    // Servers are known that wait for the body meanwhile.
    m_headers = curl_slist_append(m_headers, "Expect:");
}

void CurlTransfer::finish(CURLcode result)
{
    long status = 0;
    curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    m_response.statusCode = int(status);
    if (m_bodyIsTooLarge)
        return m_transfer->end({HTTPTransfer::bodyTooLarge,
            QStringLiteral("body above %1 bytes").arg(m_transfer->limits.bodySize)});
    if (result == CURLE_OK)
        return m_transfer->end();
    m_transfer->end({int(result),
        QString::fromLocal8Bit(
            m_errorText[0] != '\0' ? m_errorText.data() : curl_easy_strerror(result))});
}

size_t CurlTransfer::onHeader(char *line, size_t size, size_t count, void *transfer)
{
    const QByteArray text(line, qsizetype(size * count));
    return static_cast<CurlTransfer *>(transfer)->takeHeader(text.trimmed()) ? size * count : 0;
}

bool CurlTransfer::takeHeader(const QByteArray &line)
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
        && m_response.header("Content-Length").toLongLong() > m_transfer->limits.bodySize;
    return !m_bodyIsTooLarge;
}

size_t CurlTransfer::onBody(char *data, size_t size, size_t count, void *transfer)
{
    auto *self = static_cast<CurlTransfer *>(transfer);
    self->m_lastActivity = Clock::now();
    self->m_response.body.append(data, qsizetype(size * count));
    self->m_bodyIsTooLarge = self->m_response.body.size() > self->m_transfer->limits.bodySize;
    return self->m_bodyIsTooLarge ? 0 : size * count;
}

size_t CurlTransfer::onRead(char *buffer, size_t size, size_t count, void *transfer)
{
    auto *self = static_cast<CurlTransfer *>(transfer);
    self->m_lastActivity = Clock::now();
    const qsizetype left = self->m_transfer->request.body.size() - self->m_bodySent;
    const qsizetype length = std::min(left, qsizetype(size * count));
    std::memcpy(
        buffer, self->m_transfer->request.body.constData() + self->m_bodySent, size_t(length));
    self->m_bodySent += length;
    return size_t(length);
}

int CurlTransfer::onSeek(void *transfer, curl_off_t, int)
{
    return static_cast<CurlTransfer *>(transfer)->m_bodySent == 0 ? CURL_SEEKFUNC_OK
                                                                  : CURL_SEEKFUNC_FAIL;
}
