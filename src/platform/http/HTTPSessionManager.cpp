#include "platform/http/HTTPSessionManager.h"

#include "platform/http/HTTPQuery.h"

HTTPSessionManager::HTTPSessionManager(HTTPNetwork *network)
    : m_network(network)
{
}

void HTTPSessionManager::setValueForHTTPHeaderField(
    const QByteArray &value, const QByteArray &field)
{
    m_headers.append({field, value});
}

void HTTPSessionManager::setAcceptableContentTypes(const QSet<QByteArray> &types)
{
    m_limits.contentTypes = types;
}

void HTTPSessionManager::setTimeoutInterval(std::chrono::milliseconds timeout)
{
    m_limits.silence = timeout;
}

void HTTPSessionManager::setCachePolicy(CachePolicy policy)
{
    m_cachePolicy = policy;
}

void HTTPSessionManager::setAcceptsDataAddresses()
{
    m_acceptsData = true;
}

void HTTPSessionManager::setMaximumBodySize(qint64 size)
{
    m_limits.bodySize = size;
}

void HTTPSessionManager::setWholeTime(std::chrono::milliseconds time)
{
    m_limits.whole = time;
}

HTTPTask *HTTPSessionManager::start(
    HTTPRequest request, HTTPSuccess success, HTTPFailure failure) const
{
    request.headers += m_headers;
    request.mayBeData = m_acceptsData;
    const auto cache = m_cachePolicy == CachePolicy::ReturnCacheDataElseLoad
        ? HTTPTask::Cache::Used
        : HTTPTask::Cache::Ignored;
    return new HTTPTask(
        m_network, std::move(request), m_limits, cache, std::move(success), std::move(failure));
}

HTTPTask *HTTPSessionManager::GET(const QString &address, const HTTPParameters &parameters,
    HTTPSuccess success, HTTPFailure failure) const
{
    return start({.method = HTTPRequest::Method::Get,
                     .url = HTTPQuery::urlWithQuery(address, parameters),
                     .headers = {},
                     .body = {}},
        std::move(success), std::move(failure));
}

HTTPTask *HTTPSessionManager::POST(const QString &address, const HTTPParameters &parameters,
    HTTPSuccess success, HTTPFailure failure) const
{
    return start({.method = HTTPRequest::Method::Post,
                     .url = QUrl(address),
                     .headers = {{"Content-Type", "application/x-www-form-urlencoded"}},
                     .body = HTTPQuery::encoded(parameters)},
        std::move(success), std::move(failure));
}

HTTPTask *HTTPSessionManager::PUT(
    const QString &address, const QByteArray &body, HTTPSuccess success, HTTPFailure failure) const
{
    return start(
        {.method = HTTPRequest::Method::Put, .url = QUrl(address), .headers = {}, .body = body},
        std::move(success), std::move(failure));
}
