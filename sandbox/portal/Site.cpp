#include "portal/Site.h"

#include "http/Envelope.h"
#include "http/Escaping.h"
#include "portal/Assets.h"
#include "schools/Map.h"

#include <algorithm>
#include <charconv>

namespace sandbox {

namespace {

    constexpr int mostSlowMilliseconds = 120'000;

    struct Area
    {
        Host host;
        std::string_view prefix;
    };

    constexpr Area areas[] {
        {Host::Rb, "/portal/"},
        {Host::Rb, "/pages/agreement/"},
        {Host::Rb, "/pages/wechat/"},
        {Host::Rb, "/pages/qq/"},
        {Host::Rb, "/pages/control/"},
        {Host::Rb, "/images/"},
        {Host::Local, "/portal/"},
        {Host::Local, "/images/"},
        {Host::Tls, "/portal/"},
        {Host::Tls, "/images/"},
        {Host::Official, "/pages/official/"},
        {Host::Content, "/images/"},
        {Host::Content, "/cdn_pkg/"},
    };

    bool serves(const Request &request, const std::string &path)
    {
        return std::ranges::any_of(areas, [&](const Area &area) {
            return area.host == request.host && path.starts_with(area.prefix);
        });
    }

    bool hasPortal(Host host)
    {
        return host == Host::Rb || host == Host::Local || host == Host::Tls;
    }

    std::string contentTypeOf(std::string_view path)
    {
        if (path.ends_with(".css"))
            return "text/css;charset=UTF-8";
        if (path.ends_with(".js"))
            return "text/javascript;charset=UTF-8";
        if (path.ends_with(".html") || path.ends_with(".jsp"))
            return "text/html;charset=UTF-8";
        if (path.ends_with(".png"))
            return "image/png";
        if (path.ends_with(".gif"))
            return "image/gif";
        return "application/octet-stream";
    }

    //! Who else gets a code signs in as somebody else.
    bool isCallbackOf(const std::string &appId, std::string_view address)
    {
        const std::string own = appId + "://oauth";
        return address == own
            || (address.starts_with(own + '?') && address.find('#') == address.npos);
    }

    std::string withQuery(const std::string &address, const std::string &query)
    {
        return address + (address.find('?') == address.npos ? '?' : '&') + query;
    }

    std::chrono::milliseconds askedDelay(const Request &request)
    {
        const std::string text = request.param("ms");
        int value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return std::chrono::milliseconds(std::clamp(value, 0, mostSlowMilliseconds));
    }

} // namespace

Reply Site::answer(const Request &request) const
{
    if (request.method != "GET" && request.method != "HEAD")
        return textReply(405, "The page takes no " + request.method + "\n");
    const std::string &path = request.path;
    if (request.host == Host::Rb) {
        if (path == "/deployment.toml")
            return textReply(200, deploymentToml(m_platform.addresses) + m_push.toml());
        if (path == "/wechat/authorise")
            return authorise(request);
        if (path == "/qq/share")
            return sharePage(request);
        if (path == "/map/regeo")
            return regeocode(request);
    }
    if (!hasPortal(request.host))
        return asset(request, path);
    if (path == "/portal/api/session")
        return session(request);
    if (path == "/" || path == "/portal/" || m_platform.schools.byCode(path.substr(1)))
        return asset(request, "/portal/index.html");
    Reply reply = asset(request, path);
    if (path == "/portal/slow.html")
        reply.delay = askedDelay(request);
    return reply;
}

Reply Site::asset(const Request &request, const std::string &path) const
{
    const auto found = embeddedAssets().find(path);
    if (found == embeddedAssets().end() || !serves(request, path))
        return notFound(request);
    Reply reply;
    reply.contentType = contentTypeOf(path);
    reply.body = found->second;
    if (!reply.contentType.starts_with("image/"))
        reply.headers.emplace_back("Cache-Control", "no-cache");
    return reply;
}

Reply Site::notFound(const Request &request) const
{
    Reply reply = textReply(404,
        "The host \"" + std::string(roleOf(request.host)) + "\" has no " + request.path + "\n");
    if (hasPortal(request.host)) {
        reply.contentType = contentTypeOf(".html");
        reply.body = embeddedAssets().at("/portal/missing.html");
    }
    return reply;
}

Reply Site::session(const Request &request) const
{
    for (const std::string purpose : {"mo", "tmo"}) {
        const auto identity = identify(m_platform, purpose, request.cookie(purpose));
        if (!identity)
            continue;
        const School *school = m_platform.schools.byCode(identity->siteCode);
        return jsonReply({{"signed_in", true}, {"by", purpose},
            {"user_name", identity->account.name}, {"user_type", int(identity->account.type)},
            {"user_sex", identity->account.sex}, {"site_code", identity->siteCode},
            {"school", school ? Json(school->fullName) : Json(nullptr)},
            {"marker", !request.cookie("rblgin").empty()}});
    }
    return jsonReply({{"signed_in", false}}, 401);
}

Reply Site::sharePage(const Request &request) const
{
    Reply reply = asset(request, "/pages/qq/share.html");
    for (const std::string name : {"title", "summary", "url", "pics"})
        replaceAll(reply.body, "{{" + name + "}}", htmlEscaped(request.param(name)));
    return reply;
}

Reply Site::authorise(const Request &request) const
{
    const std::string appId = request.param("appid");
    if (appId.empty() || appId.find(':') != appId.npos)
        return textReply(400, "appid is missing or wrong\n");
    const std::string callback = request.param("redirect_uri");
    if (!isCallbackOf(appId, callback))
        return textReply(400, "redirect_uri is missing or no callback of the appid\n");
    const std::string state = "state=" + percentEncoded(request.param("state"));
    Reply reply = asset(request, "/pages/wechat/authorise.html");
    const auto fill = [&](std::string_view mark, const std::string &value) {
        replaceAll(reply.body, mark, htmlEscaped(value));
    };
    for (const std::string person : {"bound", "newcomer"})
        fill("{{" + person + "}}",
            withQuery(callback, "code=" + *m_platform.weChat.authorise(person) + "&" + state));
    fill("{{refuse}}", withQuery(callback, state));
    return reply;
}

} // namespace sandbox
