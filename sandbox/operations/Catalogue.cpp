#include "operations/Catalogue.h"

#include "operations/Operations.h"

#include <algorithm>
#include <optional>

namespace sandbox {

namespace {

    enum class Place {
        Common, //!< /do
        OfSite, //!< /<site code>/do
    };

    //! Where a module lives. localServer is its path at a school that runs a server of its own,
    //! empty where such a school has no copy of the module.
    struct Module
    {
        std::string_view action;
        Host host;
        Place place;
        std::string_view localServer;
    };

    constexpr Module modules[] {
        {"rb/platform/site", Host::Rb, Place::Common, {}},
        {"gpl/platform/portal", Host::Rb, Place::Common, {}},
        {"gpl/portal", Host::Rb, Place::OfSite, localPath},
        {"rb/h5/login", Host::Rb, Place::OfSite, localPath},
        {"gpl/common/hv/bind", Host::Rb, Place::OfSite, localQePath},
        {"qe/platform/regions", Host::Regions, Place::Common, {}},
        {"qe/h5/third", Host::Regions, Place::OfSite, localQePath},
        {"qe/h5/login", Host::Regions, Place::OfSite, localPath},
        {"api/public_all", Host::Public, Place::Common, {}},
        {"base/platform/portal", Host::Base, Place::Common, {}},
    };

    //! Agreements are asked for at one place whatever the module.
    constexpr std::string_view agreementStart = "agreement";
    constexpr Module agreementModule {"", Host::Rb, Place::Common, {}};

    struct Operation
    {
        std::string_view action;
        std::string_view start; //!< empty: any
        Envelope (*answer)(const Call &, Platform &);
    };

    constexpr Operation operations[] {
        {"gpl/portal", "login4H5", login4H5},
        {"gpl/portal", "login4AppWeixin", login4AppWeixin},
        {"rb/h5/login", "login", login},
        {"qe/h5/login", "login_tea", login},
        {"rb/h5/login", "verifyAccount", verifyAccount},
        {"rb/h5/login", "verifyAccount_tea", verifyParentAccount},
        {"rb/h5/login", "settingAccount", settingAccount},
        {"rb/h5/login", "settingAccount_tea", settingAccount},
        {"rb/platform/site", "cndSite", cndSite},
        {"rb/platform/site", "siteSearch", siteSearch},
        {"qe/platform/regions", "tree", regionTree},
        {"gpl/platform/portal", "getSetting4App", getSetting4App},
        {"gpl/platform/portal", "listAd4App", listAd4App},
        {"base/platform/portal", "appUpdateInfo", appUpdateInfo},
        {"api/public_all", "", publicConfiguration},
        {"gpl/common/hv/bind", "bindGeTui", bindGeTui},
        {"gpl/common/hv/bind", "unBindGeTui", unBindGeTui},
        {"qe/h5/third", "bindIm", bindIm},
    };

    const Module *moduleOf(const std::string &action, const std::string &start)
    {
        if (start == agreementStart)
            return &agreementModule;
        const auto found = std::ranges::find(modules, action, &Module::action);
        return found == std::end(modules) ? nullptr : &*found;
    }

    const Operation *operationOf(const std::string &action, const std::string &start)
    {
        static constexpr Operation agreementOperation {"", agreementStart, agreement};
        if (start == agreementStart)
            return &agreementOperation;
        const auto found = std::ranges::find_if(operations, [&](const Operation &operation) {
            return operation.action == action
                && (operation.start.empty() || operation.start == start);
        });
        return found == std::end(operations) ? nullptr : &*found;
    }

    //! The site code under which the module is called (empty for a common module), or nothing when
    //! it does not live at the address of the request.
    std::optional<std::string> siteOfCall(const Module &module, const Request &request)
    {
        constexpr std::string_view door = "/do";
        if (request.host == Host::Local) {
            if (module.localServer.empty()
                || request.path != std::string(module.localServer) + std::string(door))
                return {};
            return std::string(localSiteCode);
        }
        if (request.host != module.host)
            return {};
        if (module.place == Place::Common)
            return request.path == door ? std::optional(std::string()) : std::nullopt;
        if (!request.path.ends_with(door) || request.path.size() < door.size() + 2)
            return {};
        const std::string code = request.path.substr(1, request.path.size() - door.size() - 1);
        return code.find('/') == std::string::npos ? std::optional(code) : std::nullopt;
    }

    //! Modules which no table knows are asked for at the base of the regions host or of the
    //! school's own server.
    bool isBaseOfUnknownModules(const Request &request)
    {
        return (request.host == Host::Regions && request.path == "/")
            || (request.host == Host::Local && request.path == localPath);
    }

} // namespace

Reply Catalogue::answer(const Request &request) const
{
    const std::string action = request.param("action");
    const std::string start = request.param("start");
    const Module *module = moduleOf(action, start);
    if (!module && isBaseOfUnknownModules(request))
        return toReply(refusal(404, "没有这个接口：" + action));

    const auto siteCode = module ? siteOfCall(*module, request) : std::nullopt;
    if (!siteCode)
        return textReply(404,
            "The host \"" + std::string(roleOf(request.host)) + "\" ("
                + m_platform.addresses.authority(request.host) + ") has no operation \"" + start
                + "\" of \"" + action + "\" at " + request.path + "\n");

    if (const auto whole = m_overrides.envelopeFor(start))
        return jsonReply(*whole);
    const Operation *operation = operationOf(action, start);
    if (!operation)
        return toReply(refusal(404, "没有这个操作：" + start));
    Envelope envelope = operation->answer({request, *siteCode}, m_platform);
    if (const auto data = m_overrides.dataFor(start))
        envelope.data = *data;
    return toReply(envelope);
}

} // namespace sandbox
