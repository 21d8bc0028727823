#include "Case.h"
#include "Sandbox.h"

#include <csignal>

namespace {

httplib::Params password(const std::string& code, const std::string& pwd = "vant1234")
{
    return {{"user_code", code}, {"user_pwd", pwd}, {"bind_type", ""}, {"login_type", ""}};
}

httplib::Params token(const std::string& value)
{
    return {{"login_token", value}, {"login_type", "3"}};
}

const Case passwords("accounts sign in, or are refused, each in its way", [] {
    const Sandbox sandbox;
    const struct {
        std::string code;
        std::string pwd;
        int answer;
        int userType = 0;
        std::string site = "school01";
    } rows[]{
        {"student01", "vant1234", 200, 1},
        {"student01", "vant1234", 200, 1, "school07"},
        {"teacher01", "vant1234", 200, 2},
        {"parent01", "vant1234", 200, 5},
        {"special01", "p+w&x=1 %41#/?密码", 200, 1},
        {"notoken01", "vant1234", 200, 1},
        {"student01", "wrong", 401},
        {"student01", "", 401},
        {"nobody", "vant1234", 401},
        {"", "", 401},
        {"locked01", "vant1234", 423},
        {"student01", "vant1234", 404, 0, "nowhere"},
    };
    for (const auto& row : rows) {
        const Json answer = sandbox.portal("login4H5", password(row.code, row.pwd), row.site);
        COMPARE(answer["code"], row.answer, row.code);
        VERIFY(!answer["msg"].get<std::string>().empty(), row.code);
        if (row.answer != 200) {
            VERIFY(answer["data"].is_null(), row.code);
            continue;
        }
        const Json& data = answer["data"];
        COMPARE(data["user_type"], row.userType, row.code);
        COMPARE(data["user"]["user_code"], row.code, "");
        COMPARE(data["siteInfo"]["site_code"], row.site, "");
        COMPARE(
            data["redirect_url"], sandbox.base() + "/portal/index.html?site=" + row.site, row.code);
        COMPARE(data["siteInfo"]["redirect_url"], data["redirect_url"], row.code);
        COMPARE(data.contains("login_token"), row.code != "notoken01", row.code);
    }
    const Json silent = sandbox.portal("login4H5", password("nomsg01"));
    COMPARE(silent["code"], 500, "");
    VERIFY(!silent.contains("msg"), silent.dump());
});

const Case cookies("a login sets a session cookie, a lasting one and an unrelated one", [] {
    const Sandbox sandbox;
    const httplib::Result result = sandbox.get(
        "/school01/do?action=gpl/portal&start=login4H5&user_code=student01&user_pwd=vant1234");
    std::map<std::string, std::string> found;
    for (size_t i = 0; i < result->get_header_value_count("Set-Cookie"); ++i) {
        const std::string cookie = result->get_header_value("Set-Cookie", i);
        found[cookie.substr(0, cookie.find('='))] = cookie;
    }
    COMPARE(found.size(), 3u, "");
    VERIFY(found["mo"].ends_with("; Path=/"), found["mo"]);
    VERIFY(found["tmo"].ends_with("; Path=/; Max-Age=2592000"), found["tmo"]);

    for (const std::string name : {"mo", "tmo"}) {
        const std::string cookie = found[name].substr(0, found[name].find(';'));
        const httplib::Result session
            = sandbox.client().Get("/portal/api/session", {{"Cookie", "a=1; " + cookie + ";b=2"}});
        COMPARE(session->status, 200, name);
        COMPARE(Json::parse(session->body)["by"], name, "");
    }
    COMPARE(sandbox.get("/portal/api/session")->status, 401, "");
});

const Case tokens("a token outlives the process and is good at its site only", [] {
    std::string value;
    std::string tmo;
    {
        const Sandbox yesterday;
        value = yesterday.portal("login4H5", password("student01"))["data"]["login_token"];
        const httplib::Result login = yesterday.get(
            "/school01/do?action=gpl/portal&start=login4H5&user_code=student01&user_pwd=vant1234");
        for (size_t i = 0; i < 3; ++i)
            if (const auto cookie = login->get_header_value("Set-Cookie", i);
                cookie.starts_with("tmo="))
                tmo = cookie.substr(4, cookie.find(';') - 4);
    }
    const Sandbox today;
    const Json answer = today.portal("login4H5", token(value));
    COMPARE(answer["code"], 200, "");
    COMPARE(answer["data"]["user"]["user_code"], "student01", "");

    std::string forged = value;
    forged.back() = forged.back() == '0' ? '1' : '0';
    for (const std::string& bad : {forged, tmo, std::string("x"), std::string(), value + "00"}) {
        const Json refused = today.portal("login4H5", token(bad));
        COMPARE(refused["code"], 401, bad);
        VERIFY(!refused["msg"].get<std::string>().empty(), bad);
    }
    COMPARE(today.portal("login4H5", token(value), "school02")["code"], 401, "another site");
});

const Case activation("an account is enabled once and then signs in", [] {
    const Sandbox sandbox;
    const auto ask = [&](const std::string& start, const std::string& params) {
        return sandbox.json("/school01/do?action=rb/h5/login&start=" + start + params);
    };
    const std::string who = "&user_no=20240007&card_no=350203201209124522";
    const Json verified = ask("verifyAccount", who);
    COMPARE(verified["code"], 200, "");
    COMPARE(verified["data"]["user_name"], "曾可欣", "");
    const std::string id = verified["data"]["user_id"];

    COMPARE(
        ask("settingAccount", "&user_id=" + id + "&user_code=student01&user_pwd=secret")["code"],
        409, "taken");
    COMPARE(ask("settingAccount", "&user_id=" + id + "&user_code=&user_pwd=secret")["code"], 400,
        "empty");
    COMPARE(ask("settingAccount", "&user_id=" + id + "&user_code=kexin&user_pwd=secret")["code"],
        200, "");
    COMPARE(sandbox.portal("login4H5", password("kexin", "secret"))["code"], 200, "");
    COMPARE(ask("verifyAccount", who)["code"], 409, "enabled before");

    COMPARE(sandbox.control("reset"), 200, "");
    COMPARE(sandbox.portal("login4H5", password("kexin", "secret"))["code"], 401, "after a reset");
    const Json parent = ask(
        "verifyAccount_tea", "&user_name=%E6%9B%BE%E5%BE%B7%E6%B0%91&card_no=350203198209120019");
    COMPARE(parent["data"]["user_type"], 5, parent.dump());
});

//! The link of a button on the WeChat page, unescaped.
std::string buttonLink(
    const Sandbox& sandbox, const std::string& id, const std::string& state = "123")
{
    const std::string page
        = sandbox.get("/wechat/authorise?appid=wx0&scope=s&state=" + state)->body;
    const size_t start = page.find("href=\"", page.find("id=\"" + id + "\"")) + 6;
    std::string link = page.substr(start, page.find('"', start) - start);
    if (const size_t amp = link.find("&amp;"); amp != link.npos)
        link.erase(amp + 1, 4);
    return link;
}

std::string codeOf(const std::string& link)
{
    const size_t start = link.find("code=") + 5;
    return link.substr(start, link.find('&') - start);
}

const Case weChat("a WeChat code signs a bound person in and lets a new one bind an account", [] {
    const Sandbox sandbox;
    const auto redeem = [&](const std::string& code) {
        return sandbox.portal("login4AppWeixin", {{"code", code}, {"type", "1"}});
    };
    COMPARE(buttonLink(sandbox, "btn-refuse"), "wx0://oauth?state=123", "");
    COMPARE(
        buttonLink(sandbox, "btn-refuse", "%22%3E%26"), "wx0://oauth?state=%22%3E%26", "escaped");

    const httplib::Result page = sandbox.get("/wechat/authorise?appid=%22%3E%3Cb%3E&state=1");
    VERIFY(page && page->body.find("\"><b>") == std::string::npos,
        "the application's id is escaped too");
    COMPARE(sandbox.get("/wechat/authorise?state=1")->status, 400, "no application");

    const std::string code = codeOf(buttonLink(sandbox, "btn-agree"));
    COMPARE(redeem(code)["data"]["user"]["user_code"], "student01", "");
    COMPARE(redeem(code)["code"], 40163, "used before");

    const Json stranger = redeem(codeOf(buttonLink(sandbox, "btn-agree-new")));
    COMPARE(stranger["code"], 8888, "");
    httplib::Params binding = password("student02");
    binding.erase("bind_type");
    binding.erase("login_type");
    binding.insert({{"bind_type", "WEIXIN"}, {"login_type", "1"}});
    for (const auto& [name, value] : stranger["data"].items())
        binding.emplace(name, value.is_string() ? value.get<std::string>() : value.dump());
    httplib::Params forged = binding;
    forged.find("nick")->second = "somebody else";
    COMPARE(sandbox.portal("login4H5", forged)["code"], 403, "");
    COMPARE(sandbox.portal("login4H5", binding)["code"], 200, "");
    COMPARE(redeem(codeOf(buttonLink(sandbox, "btn-agree-new")))["data"]["user"]["user_code"],
        "student02", "");
});

} // namespace
