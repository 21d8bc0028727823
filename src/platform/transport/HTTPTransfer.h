#pragma once

#include "platform/transport/HTTPRequest.h"
#include "platform/transport/HTTPTypes.h"

#include <functional>

//! One message to a server and its answer, redirections not followed. Made on the main thread,
//! the network thread's until its end, and from then on the main thread's again.
struct HTTPTransfer
{
    //! Numbers beside the library's own, which end below 200.
    static constexpr int bodyTooLarge = 1003;
    static constexpr int cancelled = 1004;
    static constexpr int noTransport = 1007;

    void end(const HTTPError &why = {})
    {
        error = why;
        done();
    }

    const HTTPRequest request;
    const HTTPLimits limits;
    const std::function<void()> done; //!< on the network thread, once
    HTTPResponse response {};
    HTTPError error {};
};
