#include "Case.h"
#include "Sandbox.h"

#include <set>

namespace {

constexpr auto listQuery = "/do?action=rb/platform/site&start=cndSite";

const Case variety("thousands of schools begin in every way that sorting has to bear", [] {
    const Sandbox sandbox;
    const Json data = sandbox.json(listQuery)["data"];
    VERIFY(data["list"].size() >= 3000, std::to_string(data["list"].size()));

    std::set<std::string> codes;
    std::set<std::string> names;
    std::map<std::string, int> types;
    for (const Json& row : data["list"]) {
        codes.insert(row["site_code"]);
        names.insert(row["full_name"]);
        for (const std::string member : {"is_local", "url", "site_id"})
            ++types[member + " " + row[member].type_name()];
    }
    COMPARE(codes.size(), data["list"].size(), "codes are unique");
    VERIFY(names.size() > 2500 && names.size() < data["list"].size(), std::to_string(names.size()));
    for (const std::string type : {"is_local string", "is_local number", "is_local null",
             "url string", "url null", "site_id string", "site_id number"})
        VERIFY(types[type] > 100, type);
    for (const std::string start :
        {"长沙", "长春", "沈阳", "沈丘", "重庆", "厦门", "第", "37中", "BDFZ", "e", "（", "·"}) {
        const auto at = names.lower_bound(start);
        VERIFY(at != names.end() && at->starts_with(start), start);
    }
    for (const std::string cdn :
        {"terminal_cdn", "rb_cdn", "base_cdn", "register_cdn", "zzrb_cdn", "qe_cdn"})
        VERIFY(data[cdn].get<std::string>().starts_with(sandbox.base(6) + "/"), cdn);
});

const Case local(
    "the addresses of the school with its own server lead to its modules and its portal", [] {
        const Sandbox sandbox;
        const Json found = sandbox.json(
            "/do?action=rb/platform/site&start=siteSearch&searchkey=local01")["data"];
        COMPARE(found.size(), 1u, "");
        COMPARE(found[0]["is_local"], "1", "");
        const std::string server = sandbox.base(9);
        const std::string url = found[0]["url"];
        std::string qe = found[0]["url_qe"];
        VERIFY(url.starts_with(server) && qe.starts_with(server), url + " " + qe);

        const std::string login
            = "/do?action=gpl/portal&start=login4H5&user_code=student01&user_pwd=vant1234";
        const Json answer = sandbox.json(url.substr(server.size()) + login, 9);
        COMPARE(answer["data"]["redirect_url"], server + "/portal/index.html?site=local01", "");
        const std::string bind
            = "/do?action=gpl/common/hv/bind&start=bindGeTui&c_id=1&user_id=2&dev_type=1";
        COMPARE(sandbox.json(qe.substr(server.size()) + bind, 9)["code"], 200, "");

        for (size_t at = qe.find("rb"); at != qe.npos; at = qe.find("rb"))
            qe.replace(at, 2, "qe");
        const std::string parents
            = "/do?action=qe/h5/login&start=login_tea&user_code=parent01&user_pwd=vant1234";
        COMPARE(sandbox.json(qe.substr(server.size()) + parents, 9)["code"], 200, "");

        std::string portal = url;
        COMPARE(portal.find("qe/"), portal.rfind("qe/"), "occurs once");
        portal.erase(portal.find("qe/"), 3);
        COMPARE(sandbox.get(portal.substr(server.size()), 9)->status, 200, portal);
    });

const Case counts(
    "the number of schools is what was asked for, and the schools are always the same", [] {
        const auto names = [](const std::string& count) {
            const Json answer = Sandbox({"--schools", count}).json(listQuery);
            std::string all;
            for (const Json& row : answer["data"]["list"])
                all += row["full_name"].get<std::string>() + "\n";
            return all;
        };
        COMPARE(names("0"), "", "");
        COMPARE(names("1"), "厦门实验小学\n", "");
        const std::string fifty = names("50");
        COMPARE(std::count(fifty.begin(), fifty.end(), '\n'), 50, "");
        VERIFY(names("300").starts_with(fifty), "");
    });

const Case search("a search finds by code and by part of the name, and nothing else", [] {
    const Sandbox sandbox;
    const auto found = [&](const std::string& key) {
        return sandbox.json(httplib::append_query_params("/do",
            {{"action", "rb/platform/site"}, {"start", "siteSearch"}, {"searchkey", key}}))["data"];
    };
    COMPARE(found("school03").size(), 1u, "");
    COMPARE(found("厦门实验小学").size(), 2u, "the school and its branch");
    VERIFY(found("没有这样的学校").is_array() && found("没有这样的学校").empty(), "");
    VERIFY(found("").is_array() && found("").empty(), "");
    VERIFY(found("school03")[0]["regions_id"].is_string(), "");
});

const Case regions("the region tree holds every school once, and a city without any", [] {
    const Sandbox sandbox;
    const Json tree = sandbox.json("/do?action=qe/platform/regions&start=tree", 2)["data"]["tree"];
    std::set<std::string> provinces;
    size_t schools = 0;
    size_t empty = 0;
    for (const Json& province : tree) {
        provinces.insert(province["name"]);
        for (const Json& city : province["children"]) {
            schools += city["children"].size();
            empty += city["children"].empty();
            for (const Json& school : city["children"])
                VERIFY(school["full_name"].is_string() && school["site_code"].is_string(),
                    school.dump());
        }
    }
    COMPARE(schools, sandbox.json(listQuery)["data"]["list"].size(), "");
    COMPARE(provinces.size(), tree.size(), "no province twice");
    VERIFY(provinces.contains("北京") && empty > 0, "");
});

} // namespace
