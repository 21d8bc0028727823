#pragma once

#include "platform/http/HTTPTask.h"

class HTTPNetwork;

//! The way to a server: how requests are written and which answers are acceptable.
//!
//! A cheap value that is made for each request; connections, cookies and certificates belong to the
//! network behind it, which all share. Parameters travel as query (GET) or as form body (POST).
//!
//! A GET follows up to ten redirections, never from https to http. A POST or PUT follows those of
//! its own origin alone, and is never sent twice. Neither credentials nor cookies go to whom they
//! are not meant for.
class HTTPSessionManager
{
public:
    //! Answers are kept on disk for ReturnCacheDataElseLoad alone: most addresses and bodies hold
    //! secrets. What is kept answers however old it is.
    enum class CachePolicy { NoCache, ReturnCacheDataElseLoad };

    static constexpr qint64 defaultMaximumBodySize = 64 * 1024 * 1024;

    explicit HTTPSessionManager(HTTPNetwork *network);

    void setValueForHTTPHeaderField(const QByteArray &value, const QByteArray &field);
    //! Content types an answer with a body may have; none set: any.
    void setAcceptableContentTypes(const QSet<QByteArray> &types);
    //! How long nothing may arrive or leave.
    void setTimeoutInterval(std::chrono::milliseconds timeout);
    //! How long the whole may take; zero: any time.
    void setWholeTime(std::chrono::milliseconds time);
    void setCachePolicy(CachePolicy policy);
    //! Takes the content of a data: address for an answer. Without it only http and https are
    //! addresses at all.
    void setAcceptsDataAddresses();
    //! An answer with a larger body (unpacked, in bytes) is a failure, cut off as soon as that
    //! shows.
    void setMaximumBodySize(qint64 size);

    //! An answer of status 200 to 299 with an acceptable content type is success, all else failure.
    HTTPTask *GET(const QString &address, const HTTPParameters &parameters, HTTPSuccess success,
        HTTPFailure failure) const;
    HTTPTask *POST(const QString &address, const HTTPParameters &parameters, HTTPSuccess success,
        HTTPFailure failure) const;
    //! Sends the bytes as they are; their content type is a header of the caller's.
    HTTPTask *PUT(const QString &address, const QByteArray &body, HTTPSuccess success,
        HTTPFailure failure) const;

private:
    HTTPTask *start(HTTPRequest request, HTTPSuccess success, HTTPFailure failure) const;

    HTTPNetwork *m_network;
    QList<std::pair<QByteArray, QByteArray>> m_headers;
    HTTPLimits m_limits {{}, defaultMaximumBodySize, std::chrono::seconds(60)};
    bool m_acceptsData = false;
    CachePolicy m_cachePolicy = CachePolicy::NoCache;
};
