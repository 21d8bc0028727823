#include "Sandbox.h"

#include <regex>
#include <set>

namespace {

constexpr auto listQuery = "/do?action=rb/platform/site&start=cndSite";

}

//! The schools, the addresses at which each operation is answered, and the pages.
class SchoolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void schoolsBeginInEveryWay();
    void theRegionTreeHoldsEverySchoolOnce();
    void theSchoolWithItsOwnServerLeadsThere();
    void operationsBelongToTheirHostAndPath();
    void whateverAPageRefersToExists();

private:
    const Sandbox m_sandbox;
};

void SchoolTest::schoolsBeginInEveryWay()
{
    const Json list = m_sandbox.json(listQuery)["data"]["list"];
    std::set<std::string> codes;
    std::set<std::string> names;
    std::map<std::string, int> types;
    for (const Json &row : list) {
        codes.insert(row["site_code"]);
        names.insert(row["full_name"]);
        for (const std::string member : {"is_local", "url", "site_id"})
            ++types[member + " " + row[member].type_name()];
    }
    QVERIFY(list.size() >= 3000);
    COMPARE(codes.size(), list.size());
    QVERIFY(names.size() > 2500 && names.size() < list.size());
    for (const char *type : {"is_local string", "is_local number", "is_local null", "url null"})
        QVERIFY2(types[type] > 100, type);
    for (const char *start :
        {"长沙", "长春", "沈阳", "沈丘", "重庆", "厦门", "第", "37中", "BDFZ", "e", "（", "·"}) {
        const auto at = names.lower_bound(start);
        QVERIFY2(at != names.end() && at->starts_with(start), start);
    }
}

void SchoolTest::theRegionTreeHoldsEverySchoolOnce()
{
    const Json answer = m_sandbox.json("/do?action=qe/platform/regions&start=tree", 2);
    std::set<std::string> provinces;
    size_t schools = 0;
    size_t empty = 0;
    for (const Json &province : answer["data"]["tree"]) {
        QVERIFY(provinces.insert(province["name"]).second);
        for (const Json &city : province["children"]) {
            schools += city["children"].size();
            empty += city["children"].empty();
        }
    }
    const Json list = m_sandbox.json(listQuery)["data"]["list"];
    COMPARE(schools, list.size());
    // Those that are asked for by number are the first of them.
    const Json few = Sandbox({u"--schools"_qs, u"50"_qs}).json(listQuery)["data"]["list"];
    COMPARE(few.size(), 50u);
    COMPARE(few[49]["full_name"], list[49]["full_name"]);
    QVERIFY(provinces.contains("北京") && empty > 0);
}

void SchoolTest::theSchoolWithItsOwnServerLeadsThere()
{
    const auto found = [&](const std::string &key) {
        return m_sandbox.json(httplib::append_query_params("/do",
            {{"action", "rb/platform/site"}, {"start", "siteSearch"}, {"searchkey", key}}))["data"];
    };
    COMPARE(found("厦门实验小学").size(), 2u);
    QVERIFY(found("没有这样的学校").is_array() && found("没有这样的学校").empty());
    const Json school = found("local01")[0];
    const std::string server = m_sandbox.base(9);
    const std::string url = school["url"].get<std::string>().substr(server.size());
    const std::string qe = school["url_qe"].get<std::string>().substr(server.size());

    const Json login = m_sandbox.json(
        url + "/do?action=gpl/portal&start=login4H5&user_code=student01&user_pwd=vant1234", 9);
    COMPARE(login["data"]["redirect_url"], server + "/portal/index.html?site=local01");
    const std::string bind = "/do?action=gpl/common/hv/bind&start=bindGeTui&c_id=1&user_id=2";
    COMPARE(m_sandbox.json(qe + bind + "&dev_type=1", 9)["code"], 200);
    // The portal is where its address leads without "qe/", which occurs once.
    COMPARE(url.find("qe/"), url.rfind("qe/"));
    COMPARE(m_sandbox.status(std::regex_replace(url, std::regex("qe/"), ""), 9), 200);
}

void SchoolTest::operationsBelongToTheirHostAndPath()
{
    const struct
    {
        std::string action;
        std::string start;
        int host;
        std::string path;
    } rows[] {
        {"rb/platform/site", "cndSite", 1, "/do"},
        {"made/up", "agreement", 1, "/do"},
        {"gpl/portal", "login4H5", 1, "/school01/do"},
        {"gpl/common/hv/bind", "bindGeTui", 1, "/school01/do"},
        {"qe/platform/regions", "tree", 2, "/do"},
        {"qe/h5/login", "login_tea", 2, "/school01/do"},
        {"base/platform/portal", "appUpdateInfo", 4, "/do"},
        {"api/public_all", "public_all", 3, "/do"},
    };
    for (const auto &[action, start, host, path] : rows) {
        const std::string operation = "action=" + action + "&start=" + start;
        const Json own = m_sandbox.json(path + "?" + operation, host);
        QVERIFY2(own["code"].is_number() && own["msg"].is_string(), own.dump().c_str());
        const httplib::Result posted
            = m_sandbox.client(host).Post(path, operation, "application/x-www-form-urlencoded");
        COMPARE(Json::parse(posted->body)["code"], own["code"]);

        for (int other = 1; other <= 8; ++other) {
            for (const std::string wrong : {"/do", "/school01/do", "/a/b/do", "/do/"}) {
                if (other == host && wrong == path)
                    continue;
                const httplib::Result result = m_sandbox.get(wrong + "?" + operation, other);
                COMPARE(result ? result->status : 0, 404);
                // It says who was asked for what.
                QVERIFY(result->body.find(m_sandbox.base(other).substr(7)) != std::string::npos);
                QVERIFY(result->body.find(start) != std::string::npos);
            }
        }
    }
}

void SchoolTest::whateverAPageRefersToExists()
{
    const std::regex reference(R"rx((?:href|src)="(/[^"#?]*)|'(/(?:portal|images)/[^'?]*)')rx");
    std::set<std::string> seen;
    std::vector<std::string> todo {"/portal/index.html", "/pages/agreement/user.html",
        "/pages/agreement/privacy.html", "/portal/landscape.html"};
    while (!todo.empty()) {
        const std::string path = todo.back();
        todo.pop_back();
        const bool isPrefix = path == "/images/avatar-" || path == "/portal/api/session";
        if (isPrefix || !seen.insert(path).second)
            continue;
        const httplib::Result result = m_sandbox.get(path);
        // One page is meant to be missing.
        COMPARE(result->status, path == "/portal/missing" ? 404 : 200);
        if (path.ends_with(".html") || path.ends_with(".js"))
            for (std::sregex_iterator match(result->body.begin(), result->body.end(), reference),
                 end;
                 match != end; ++match)
                todo.push_back((*match)[1].matched ? (*match)[1] : (*match)[2]);
    }
    for (const std::string page : {"bridge", "bridge-old", "bridge-event", "cookies", "links",
             "upload", "slow", "storage", "plain", "outlink"})
        QVERIFY2(seen.contains("/portal/" + page + ".html"), page.c_str());
    COMPARE(m_sandbox.status("/portal/index.html", 5), 404);
    COMPARE(m_sandbox.status("/wechat/authorise?appid=wx1", 2), 404);
}

QTEST_GUILESS_MAIN(SchoolTest)
#include "SchoolTest.moc"
