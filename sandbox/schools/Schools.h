#pragma once

#include "http/Addresses.h"
#include "http/Envelope.h"

#include <map>
#include <string>
#include <vector>

namespace sandbox {

//! Paths of the school that runs a server of its own. Clients put "/do" behind either, drop the
//! "qe/" of the first to reach the portal, and write "qe" for "rb" in the second to sign in
//! parents.
inline constexpr std::string_view localPath = "/qe/local01";
inline constexpr std::string_view localQePath = "/rb/local01";
inline constexpr std::string_view localSiteCode = "local01";

enum class Logo { Plain, SchemeRelative, None };

//! A school that uses the platform.
struct School
{
    std::string fullName;
    std::string siteCode;
    int siteId = 0;
    size_t city = 0; //!< index into cities()
    bool isLocal = false;
    Logo logo = Logo::Plain;
};

//! The schools of the platform: a few made for showing, then as many generated ones as asked for.
//! The same number gives the same schools every time. Unchanging after construction.
class Schools
{
public:
    Schools(size_t count, const Addresses &addresses);

    const School *byCode(const std::string &siteCode) const;
    //! By site id or by site code, as clients ask with either.
    const School *bySite(const std::string &idOrCode) const;

    Json list() const;
    Json search(const std::string &key) const;
    //! Provinces, their cities, and the schools of each.
    Json regionTree() const;

private:
    Json row(const School &school) const;

    Addresses m_addresses;
    std::vector<School> m_schools;
    std::map<std::string, size_t> m_byCode;
};

} // namespace sandbox
