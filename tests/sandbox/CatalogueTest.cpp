#include "Case.h"
#include "Sandbox.h"

namespace {

struct Call {
    std::string action;
    std::string start;
    int host;
    std::string path;
    std::string params = "";
    int code = 200;
};

const Call calls[]{
    {"rb/platform/site", "cndSite", 1, "/do"},
    {"rb/platform/site", "siteSearch", 1, "/do", "&searchkey=school01"},
    {"gpl/platform/portal", "getSetting4App", 1, "/do", "&site_id=10001"},
    {"gpl/platform/portal", "getSetting4App", 1, "/do", "&site_id=school01"},
    {"gpl/platform/portal", "listAd4App", 1, "/do", "&terminal=ios&resolution_pixel=1170*2532"},
    {"gpl/platform/portal", "agreement", 1, "/do", "&type=1"},
    {"gpl/platform/portal", "agreement", 1, "/do", "&type=2"},
    {"gpl/portal", "login4H5", 1, "/school01/do", "&user_code=student01&user_pwd=vant1234"},
    {"gpl/portal", "login4AppWeixin", 1, "/school01/do", "&code=x&type=1", 40163},
    {"rb/h5/login", "login", 1, "/school01/do", "&user_code=teacher01&user_pwd=vant1234"},
    {"rb/h5/login", "verifyAccount", 1, "/school01/do", "&user_no=0&card_no=0", 404},
    {"rb/h5/login", "verifyAccount_tea", 1, "/school01/do", "&user_name=0&card_no=0", 404},
    {"rb/h5/login", "settingAccount", 1, "/school01/do", "&user_id=0&user_code=a&user_pwd=b", 404},
    {"rb/h5/login", "settingAccount_tea", 1, "/school01/do", "&user_id=0&user_code=a&user_pwd=b",
        404},
    {"gpl/common/hv/bind", "bindGeTui", 1, "/school01/do", "&c_id=c&user_id=u&dev_type=1"},
    {"gpl/common/hv/bind", "unBindGeTui", 1, "/school01/do", "&c_id=c&user_id=u"},
    {"qe/platform/regions", "tree", 2, "/do"},
    {"qe/h5/third", "bindIm", 2, "/school01/do", "&reg_id=r&user_id=u"},
    {"qe/h5/login", "login_tea", 2, "/school01/do", "&user_code=parent01&user_pwd=vant1234"},
    {"base/platform/portal", "appUpdateInfo", 4, "/do", "&cur_bulid_no=7&app_name=a&app_os=IOS"},
    {"api/public_all", "public_all", 3, "/do"},
};

std::string query(const Call& call)
{
    return "?action=" + call.action + "&start=" + call.start + call.params;
}

//! What a school's own server has: the paths behind its two addresses.
const Call localCalls[]{
    {"gpl/portal", "login4H5", 9, "/qe/local01/do", "&user_code=student01&user_pwd=vant1234"},
    {"rb/h5/login", "login", 9, "/qe/local01/do", "&user_code=student01&user_pwd=vant1234"},
    {"qe/h5/login", "login_tea", 9, "/qe/local01/do", "&user_code=parent01&user_pwd=vant1234"},
    {"qe/h5/third", "bindIm", 9, "/rb/local01/do", "&reg_id=r&user_id=u"},
    {"gpl/common/hv/bind", "bindGeTui", 9, "/rb/local01/do", "&c_id=c&user_id=u&dev_type=1"},
};

bool isLocalModule(const std::string& action)
{
    for (const Call& call : localCalls)
        if (call.action == action)
            return true;
    return false;
}

const Case owners("each operation is answered by its owner, by GET and by POST", [] {
    const Sandbox sandbox;
    std::vector<Call> all(std::begin(calls), std::end(calls));
    all.insert(all.end(), std::begin(localCalls), std::end(localCalls));
    for (const Call& call : all) {
        const Json answer = sandbox.json(call.path + query(call), call.host);
        COMPARE(answer["code"], call.code, query(call));
        VERIFY(answer["msg"].is_string() && answer.contains("data"), answer.dump());
        const httplib::Result posted = sandbox.client(call.host).Post(
            call.path, query(call).substr(1), "application/x-www-form-urlencoded");
        COMPARE(posted ? Json::parse(posted->body)["code"].get<int>() : 0, call.code, query(call));
    }
});

const Case strangers("an operation at a host or path that does not own it is refused by name", [] {
    const Sandbox sandbox;
    int refused = 0;
    for (const Call& call : calls) {
        for (int host = 1; host <= 9; ++host) {
            for (const std::string path :
                {"/do", "/school01/do", "/a/b/do", "/do/", "/", "/qe/local01/do"}) {
                const bool owner = host == call.host && path == call.path;
                const bool localOwner
                    = host == 9 && path == "/qe/local01/do" && isLocalModule(call.action);
                if (owner || localOwner)
                    continue;
                const httplib::Result result = sandbox.get(path + query(call), host);
                const std::string row = sandbox.base(host) + path + query(call);
                COMPARE(result ? result->status : 0, 404, row);
                VERIFY(result->body.find(sandbox.base(host).substr(7)) != std::string::npos, row);
                VERIFY(result->body.find(call.start) != std::string::npos, row);
                ++refused;
            }
        }
    }
    VERIFY(refused > 1000, std::to_string(refused));
});

const Case agreements(
    "agreements are asked for at one place whatever the module, and their pages exist", [] {
        const Sandbox sandbox;
        for (const std::string action : {"gpl/platform/portal", "gpl/portal", "made/up"}) {
            const Json answer = sandbox.json("/do?action=" + action + "&start=agreement&type=2");
            COMPARE(answer["data"]["title"], "隐私政策", action);
            const std::string url = answer["data"]["url"];
            VERIFY(url.starts_with(sandbox.base() + "/"), url);
            const httplib::Result page = sandbox.get(url.substr(sandbox.base().size()));
            VERIFY(page && page->status == 200 && page->body.find("隐私政策") != std::string::npos,
                url);
        }
    });

const Case unknown(
    "unknown modules and operations are refused with an envelope where they may be asked", [] {
        const Sandbox sandbox;
        COMPARE(sandbox.json("/?action=made/up&start=x", 2)["code"], 404, "default base");
        COMPARE(sandbox.json("/qe/local01?action=made/up&start=x", 9)["code"], 404, "own server");
        COMPARE(
            sandbox.json("/do?action=rb/platform/site&start=made_up")["code"], 404, "operation");
    });

const Case logos("logos come in all forms, and those that are pictures exist", [] {
    const Sandbox sandbox;
    const auto logoOf = [&](const std::string& site) {
        return sandbox.json("/do?action=gpl/platform/portal&start=getSetting4App&site_id="
            + site)["data"]["h5_logo"];
    };
    const std::string plain = logoOf("school01");
    VERIFY(plain.starts_with(sandbox.base(6) + "/"), plain);
    const httplib::Result picture = sandbox.get(plain.substr(sandbox.base(6).size()), 6);
    VERIFY(picture && picture->status == 200 && picture->body.starts_with("\x89PNG"), plain);
    VERIFY(logoOf("school02").get<std::string>().starts_with("//127.0.0.10:"), "");
    VERIFY(logoOf("school04").is_null(), "");
});

} // namespace
