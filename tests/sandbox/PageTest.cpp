#include "Case.h"
#include "Sandbox.h"

#include <regex>
#include <set>

namespace {

bool looksMissing(const httplib::Result& result)
{
    return result && result->status == 404
        && result->get_header_value("Content-Type").starts_with("text/html")
        && result->body.find("404") != std::string::npos;
}

const Case links(
    "whatever the pages refer to exists, the page that is meant to be missing excepted", [] {
        const Sandbox sandbox;
        const std::regex reference(R"rx((?:href|src)="(/[^"#?]*)|'(/(?:portal|images)/[^'?]*)')rx");
        std::set<std::string> seen;
        std::vector<std::string> todo{"/portal/index.html", "/pages/agreement/user.html",
            "/pages/agreement/privacy.html", "/portal/landscape.html", "/images/avatar-1.png",
            "/images/avatar-2.png"};
        while (!todo.empty()) {
            const std::string path = todo.back();
            todo.pop_back();
            if (!seen.insert(path).second || path == "/images/avatar-"
                || path == "/portal/api/session")
                continue;
            const httplib::Result result = sandbox.get(path);
            if (path == "/portal/missing") {
                VERIFY(looksMissing(result), path);
                continue;
            }
            COMPARE(result ? result->status : 0, 200, path);
            if (!path.ends_with(".html") && !path.ends_with(".js"))
                continue;
            for (std::sregex_iterator match(result->body.begin(), result->body.end(), reference),
                 end;
                 match != end; ++match)
                todo.push_back((*match)[1].matched ? (*match)[1] : (*match)[2]);
        }
        for (const std::string page : {"bridge", "bridge-old", "bridge-event", "cookies", "links",
                 "upload", "slow", "storage", "plain", "outlink"})
            VERIFY(seen.contains("/portal/" + page + ".html"), page);
    });

const Case hosts("pages are served by their own hosts only", [] {
    const Sandbox sandbox;
    const struct {
        std::string path;
        std::set<int> owners;
    } rows[]{
        {"/portal/index.html", {1, 9}},
        {"/school01", {1, 9}},
        {"/images/school-1.png", {1, 6, 9}},
        {"/pages/official/h5/download.jsp", {5}},
        {"/pages/agreement/user.html", {1}},
        {"/wechat/authorise?appid=wx1", {1}},
        {"/deployment.toml", {1}},
    };
    for (const auto& row : rows)
        for (int host = 1; host <= 9; ++host)
            COMPARE(sandbox.get(row.path, host)->status, row.owners.contains(host) ? 200 : 404,
                sandbox.base(host) + row.path);
    for (const int host : {7, 8})
        COMPARE(Json::parse(sandbox.get("/upload", host)->body)["code"], 404, "says so itself");
});

} // namespace
