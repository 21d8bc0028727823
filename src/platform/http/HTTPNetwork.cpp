#include "platform/http/HTTPNetwork.h"

HTTPNetwork::HTTPNetwork(HTTPCookieStorage *cookies, const QString &cacheFolder)
    : m_cookies(cookies)
{
    if (!cacheFolder.isEmpty())
        m_cache.emplace(cacheFolder);
}

HTTPNetwork::~HTTPNetwork()
{
    // Before the thread that they use ends.
    qDeleteAll(findChildren<QObject *>(Qt::FindDirectChildrenOnly));
}
