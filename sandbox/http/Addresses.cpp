#include "http/Addresses.h"

namespace sandbox {

std::string_view roleOf(Host host)
{
    static constexpr std::array<std::string_view, allHosts.size()> roles {"rb", "regions", "public",
        "base", "official", "content", "upload", "storage", "local", "tls"};
    return roles[size_t(host)];
}

std::string addressOf(Host host)
{
    return "127.0.0." + std::to_string(int(host) + 1);
}

std::string Addresses::authority(Host host) const
{
    return addressOf(host) + ":" + std::to_string(m_port);
}

std::string Addresses::base(Host host) const
{
    return (host == Host::Tls ? "https://" : "http://") + authority(host) + "/";
}

} // namespace sandbox
