#pragma once

#include <array>
#include <string>
#include <string_view>

namespace sandbox {

//! The hosts of the platform. Each has a loopback address of its own, for browsers do not keep the
//! cookies of two ports of one address apart.
enum class Host { Rb, Regions, Public, Base, Official, Content, Upload, Storage, Local, Tls };

inline constexpr std::array allHosts {Host::Rb, Host::Regions, Host::Public, Host::Base,
    Host::Official, Host::Content, Host::Upload, Host::Storage, Host::Local, Host::Tls};

//! Name of the host's role, for messages: "rb", "regions", …
std::string_view roleOf(Host host);

//! The numeric address: "127.0.0.1" for Host::Rb, which serves the portal too.
std::string addressOf(Host host);

//! Where the hosts are reached, once the port is known.
class Addresses
{
public:
    explicit Addresses(int port)
        : m_port(port)
    {
    }

    int port() const { return m_port; }
    //! "127.0.0.6:41234"
    std::string authority(Host host) const;
    //! "http://127.0.0.6:41234/"
    std::string base(Host host) const;

private:
    int m_port;
};

} // namespace sandbox
