#pragma once

#include "accounts/Platform.h"
#include "http/Message.h"
#include "push/PushService.h"

#include <string>

namespace sandbox {

//! What browsers see: the portal, the pages around it, pictures, the WeChat authorisation page and
//! the configuration for clients. Each host serves its own part only.
class Site
{
public:
    Site(Platform &platform, PushService &push)
        : m_platform(platform)
        , m_push(push)
    {
    }

    Reply answer(const Request &request) const;

private:
    Reply session(const Request &request) const;
    Reply sharePage(const Request &request) const;
    Reply authorise(const Request &request) const;
    Reply asset(const Request &request, const std::string &path) const;
    Reply notFound(const Request &request) const;

    Platform &m_platform;
    PushService &m_push;
};

//! A client's configuration in TOML that makes it use the hosts at these addresses.
std::string deploymentToml(const Addresses &addresses);

} // namespace sandbox
