#pragma once

#include "platform/http/HTTPCache.h"
#include "platform/transport/HTTPThread.h"

#include <QObject>

class HTTPCookieStorage;

//! The client's way to all servers: one thread, one set of connections, one cookie storage, one
//! cache. Authorities that are added later count for networks made after that. The system's
//! resolver, and a proxy where the environment names one. Its end ends its tasks without an answer.
class HTTPNetwork : public QObject
{
    Q_OBJECT

public:
    //! \a cookies outlives the network; none: no cookie is sent or stored. \a cacheFolder: empty:
    //! nothing is kept.
    explicit HTTPNetwork(HTTPCookieStorage *cookies = nullptr, const QString &cacheFolder = {});
    ~HTTPNetwork() override;

    HTTPCookieStorage *cookies() const { return m_cookies; }
    //! Null where nothing is kept.
    HTTPCache *cache() { return m_cache ? &*m_cache : nullptr; }
    HTTPThread *thread() { return &m_thread; }

private:
    HTTPCookieStorage *m_cookies;
    std::optional<HTTPCache> m_cache;
    HTTPThread m_thread;
};
