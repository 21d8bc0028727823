#include "portal/Site.h"
#include "schools/Map.h"

namespace sandbox {

std::string deploymentToml(const Addresses &addresses)
{
    const auto host = [&](std::string_view key, Host which) {
        return std::string(key) + " = \"" + addresses.base(which) + "\"\n";
    };
    return "[hosts]\n" + host("regions", Host::Regions) + host("rb", Host::Rb)
        + host("public", Host::Public) + host("base", Host::Base) + host("portal", Host::Rb)
        + host("official", Host::Official) + host("content", Host::Content)
        + "\n[app]\nbuild = \"120\"\ndisplay_name = \"成长平台\"\n"
          "\n[service]\ncustomer_service_account = \"800012345\"\n"
          "\n[wechat]\napp_id = \"wx3f5a9c2e7b1d4068\"\nauthorise_url = \""
        + addresses.base(Host::Rb) + "wechat/authorise\"\n"
        + "\n[qq]\napp_id = \"1104839275\"\nshare_url = \"" + addresses.base(Host::Rb)
        + "qq/share\"\n\n[location]\nmap_key = \"" + std::string(mapKey) + "\"\nregeocode_url = \""
        + addresses.base(Host::Rb) + "map/regeo\"\n";
}

} // namespace sandbox
