#include "platform/http/PictureDownload.h"

#include <QUrl>

namespace {

constexpr std::chrono::seconds timeout {30};

}

bool PictureDownload::isAllowed(const QUrl &address)
{
    const QString scheme = address.scheme();
    return scheme == u"http" || scheme == u"https" || scheme == u"data";
}

HTTPSessionManager PictureDownload::session(HTTPNetwork *network)
{
    HTTPSessionManager session(network);
    session.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
    session.setTimeoutInterval(timeout);
    return session;
}
