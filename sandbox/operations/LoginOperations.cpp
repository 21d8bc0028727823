#include "operations/Operations.h"

#include "accounts/Signer.h"

#include <atomic>

namespace sandbox {

namespace {

    constexpr int codeBadCredentials = 401;
    constexpr int codeNoSuchSite = 404;
    constexpr int codeLocked = 423;
    constexpr auto tmoLifetimeSeconds = 30 * 24 * 3600;
    constexpr auto tokenLoginType = "3";

    std::string roleName(UserType type)
    {
        switch (type) {
        case UserType::Teacher:
            return "教师";
        case UserType::Parent:
            return "家长";
        default:
            return "学生";
        }
    }

    Json userRecord(const Account &account, const School &school, const Addresses &addresses)
    {
        const std::string avatar = "images/avatar-" + account.sex + ".png";
        return {{"user_id", account.userId()}, {"user_code", account.userCode},
            {"user_name", account.name}, {"user_no", account.userNo},
            {"user_type", int(account.type)}, {"user_sex", account.sex},
            {"card_no", account.cardNo}, {"email", nullptr}, {"organ_id", 7000 + school.siteId},
            {"head_url", "/" + avatar}, {"full_head_url", addresses.base(Host::Content) + avatar},
            {"mobile", account.mobile.empty() ? Json(nullptr) : Json(account.mobile)},
            {"site_id", std::to_string(school.siteId)}};
    }

    Headers sessionCookies(const Account &account, const School &school)
    {
        static std::atomic<int> sessions = 0;
        const std::string session = std::to_string(++sessions);
        const std::string mo = credential("mo", account, school.siteCode, session);
        const std::string tmo = credential("tmo", account, school.siteCode);
        return {{"Set-Cookie", "mo=" + mo + "; Path=/"},
            {"Set-Cookie",
                "tmo=" + tmo + "; Path=/; Max-Age=" + std::to_string(tmoLifetimeSeconds)},
            {"Set-Cookie", "acw_route=" + session + "; Path=/"}};
    }

    Envelope signIn(const Account &account, const Call &call, Platform &platform)
    {
        const School *school = platform.schools.byCode(call.siteCode);
        if (!school)
            return refusal(codeNoSuchSite, "该学校尚未开通，请重新选择学校");
        const std::string portal = platform.addresses.base(call.request.host)
            + "portal/index.html?site=" + school->siteCode;
        const std::string role = roleName(account.type);
        Envelope answer = success({
            {"siteInfo",
                {{"global_ctx", platform.addresses.base(call.request.host) + school->siteCode},
                    {"global_ctx_dt", platform.addresses.base(Host::Content)},
                    {"site_code", school->siteCode}, {"redirect_url", portal}}},
            {"redirect_url", portal},
            {"user", userRecord(account, *school, platform.addresses)},
            {"user_type", int(account.type)},
            {"ssoinfo",
                {{"ck_LoginId", account.userId()}, {"ck_LoginName", account.userCode},
                    {"ck_RoleIds", int(account.type)}, {"ck_roleNames", role}}},
        });
        if (account.quirk != Quirk::NoLoginToken)
            answer.data["login_token"] = credential("token", account, school->siteCode);
        answer.headers = sessionCookies(account, *school);
        return answer;
    }

    Envelope passwordLogin(const Call &call, Platform &platform)
    {
        const auto account = platform.accounts.byCode(call.param("user_code"));
        if (!account || account->password != call.param("user_pwd"))
            return refusal(codeBadCredentials, "账号或密码错误，请重新输入");
        if (account->quirk == Quirk::Locked)
            return refusal(codeLocked, "账号已被锁定，请联系学校管理员");
        if (account->quirk == Quirk::RefusedWithoutMessage) {
            Envelope silent = refusal(500, {});
            silent.msg.reset();
            return silent;
        }
        if (call.param("bind_type") == "WEIXIN" && !platform.weChat.bind(call.request, *account))
            return refusal(403, "微信身份校验失败，请重新授权");
        return signIn(*account, call, platform);
    }

} // namespace

Envelope login4H5(const Call &call, Platform &platform)
{
    if (call.param("login_type") != tokenLoginType)
        return passwordLogin(call, platform);
    const auto identity = identify(platform, "token", call.param("login_token"));
    if (!identity || identity->siteCode != call.siteCode)
        return refusal(codeBadCredentials, "登录已过期，请重新登录");
    return signIn(identity->account, call, platform);
}

Envelope login4AppWeixin(const Call &call, Platform &platform)
{
    const auto person = platform.weChat.redeem(call.param("code"));
    if (!person)
        return refusal(40163, "授权码已失效，请重新授权");
    const auto account = platform.accounts.byCode(platform.weChat.accountOf(*person));
    if (account)
        return signIn(*account, call, platform);
    Envelope unbound = success(WeChat::identityOf(*person));
    unbound.code = codeUnbound;
    unbound.msg = "该微信尚未绑定账号";
    return unbound;
}

Envelope login(const Call &call, Platform &platform)
{
    return passwordLogin(call, platform);
}

} // namespace sandbox
