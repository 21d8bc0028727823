#include "operations/Operations.h"

namespace sandbox {

namespace {

    constexpr int logoVariants = 4;

    Json logoOf(const School &school, const Addresses &addresses)
    {
        const std::string picture
            = "images/school-" + std::to_string(school.siteId % logoVariants + 1) + ".png";
        switch (school.logo) {
        case Logo::SchemeRelative:
            return "//" + addresses.authority(Host::Tls) + "/" + picture;
        case Logo::None:
            return nullptr;
        default:
            return addresses.base(Host::Content) + picture;
        }
    }

} // namespace

Envelope cndSite(const Call &, Platform &platform)
{
    const std::string content = platform.addresses.base(Host::Content);
    return success({{"terminal_cdn", content + "terminal/"}, {"rb_cdn", content + "rb/"},
        {"base_cdn", content + "base/"}, {"register_cdn", content + "register/"},
        {"zzrb_cdn", content + "zzrb/"}, {"qe_cdn", content + "qe/"},
        {"list", platform.schools.list()}});
}

Envelope siteSearch(const Call &call, Platform &platform)
{
    return success(platform.schools.search(call.param("searchkey")));
}

Envelope regionTree(const Call &, Platform &platform)
{
    return success({{"tree", platform.schools.regionTree()}});
}

Envelope getSetting4App(const Call &call, Platform &platform)
{
    const School *school = platform.schools.bySite(call.param("site_id"));
    if (!school)
        return refusal(404, "学校不存在");
    return success({{"site_name", school->fullName},
        {"h5_logo", logoOf(*school, platform.addresses)}, {"theme_color", "#3dd187"}});
}

} // namespace sandbox
