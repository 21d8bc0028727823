#pragma once

#include "accounts/Platform.h"
#include "http/Envelope.h"
#include "operations/Overrides.h"

namespace sandbox {

//! The operations of the platform: which host owns each, at which path, and what answers it. A call
//! at any other place is refused with HTTP 404 and a text, for a client that asks the wrong host
//! must not get away with it.
class Catalogue
{
public:
    Catalogue(Platform &platform, const Overrides &overrides)
        : m_platform(platform)
        , m_overrides(overrides)
    {
    }

    //! Requests that name an "action" are calls.
    static bool isCall(const Request &request) { return request.has("action"); }
    Reply answer(const Request &request) const;

private:
    Platform &m_platform;
    const Overrides &m_overrides;
};

} // namespace sandbox
