#include "platform/http/PictureDownload.h"

namespace {

constexpr std::chrono::seconds timeout {30};

}

HTTPSessionManager PictureDownload::session(HTTPNetwork *network)
{
    HTTPSessionManager session(network);
    session.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
    session.setTimeoutInterval(timeout);
    session.setAcceptsDataAddresses();
    return session;
}
