#include "platform/http/HTTPSessionManager.h"

#include "platform/http/HTTPQuery.h"

#include <QAbstractNetworkCache>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

HTTPSessionManager::HTTPSessionManager(QNetworkAccessManager *network)
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

void HTTPSessionManager::setMaximumBodySize(qint64 size)
{
    m_limits.bodySize = size;
}

QNetworkRequest HTTPSessionManager::request(const QUrl &url) const
{
    QNetworkRequest request(url);
    const bool usesCache = m_cachePolicy == CachePolicy::ReturnCacheDataElseLoad;
    const bool isKept
        = usesCache && m_network->cache() && m_network->cache()->metaData(url).isValid();
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
        isKept          ? QNetworkRequest::AlwaysCache
            : usesCache ? QNetworkRequest::PreferNetwork
                        : QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, usesCache);
    for (const auto &[field, value] : m_headers)
        request.setRawHeader(field, value);
    return request;
}

HTTPTask *HTTPSessionManager::track(
    QNetworkReply *reply, HTTPSuccess success, HTTPFailure failure) const
{
    return new HTTPTask(reply, m_limits, std::move(success), std::move(failure));
}

HTTPTask *HTTPSessionManager::GET(const QString &address, const HTTPParameters &parameters,
    HTTPSuccess success, HTTPFailure failure) const
{
    return track(m_network->get(request(HTTPQuery::urlWithQuery(address, parameters))),
        std::move(success), std::move(failure));
}

HTTPTask *HTTPSessionManager::POST(const QString &address, const HTTPParameters &parameters,
    HTTPSuccess success, HTTPFailure failure) const
{
    QNetworkRequest post = request(QUrl(address));
    post.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
    return track(m_network->post(post, HTTPQuery::encoded(parameters)), std::move(success),
        std::move(failure));
}

HTTPTask *HTTPSessionManager::PUT(
    const QString &address, const QByteArray &body, HTTPSuccess success, HTTPFailure failure) const
{
    QUrl url(address);
    // The transport would write a local file.
    if (!url.scheme().startsWith(QStringLiteral("http")))
        url.clear();
    return track(m_network->put(request(url), body), std::move(success), std::move(failure));
}
