#include "operations/Operations.h"

namespace sandbox {

Envelope agreement(const Call &call, Platform &platform)
{
    const std::string pages = platform.addresses.base(Host::Rb) + "pages/agreement/";
    if (call.param("type") == "1")
        return success({{"title", "用户协议"}, {"url", pages + "user.html"}});
    if (call.param("type") == "2")
        return success({{"title", "隐私政策"}, {"url", pages + "privacy.html"}});
    return refusal(400, "没有这类协议");
}

Envelope appUpdateInfo(const Call &call, Platform &platform)
{
    return success(platform.notices.update(call.param("cur_bulid_no")));
}

Envelope listAd4App(const Call &, Platform &platform)
{
    return success(platform.notices.ads());
}

Envelope publicConfiguration(const Call &, Platform &platform)
{
    return success({{"official_url", platform.addresses.base(Host::Official)},
        {"content_url", platform.addresses.base(Host::Content)}, {"service_phone", "400-000-0000"},
        {"upload_limit", 209'715'200}});
}

} // namespace sandbox
