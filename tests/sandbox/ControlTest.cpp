#include "Case.h"
#include "Sandbox.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include <unistd.h>

namespace {

constexpr auto page = "/portal/plain.html";

//! A file below the system's temporary folder that goes with the object.
struct TemporaryFile {
    std::string path
        = std::filesystem::temp_directory_path() / ("sandbox-test-" + std::to_string(getpid()));
    ~TemporaryFile() { std::filesystem::remove(path); }
};

std::vector<Json> linesOf(const std::string& path)
{
    std::vector<Json> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

const Case entries("the trace shows requests as they came, those to the control excepted", [] {
    const TemporaryFile file;
    std::ofstream(file.path) << "{\"method\":\"OLD\"}\n";
    const Sandbox sandbox({"--trace", file.path});
    httplib::Client client = sandbox.client(4);
    client.set_url_encode(false);
    client.Get(
        "/do?start=b&action=a%2Fb&z=%E9%95%BF+%26", {{"X-Probe", "one"}, {"X-Probe", "two"}});
    client.Post("/do", "b=2&a=1%2B", "application/x-www-form-urlencoded");
    client.Put("/thing", std::string(70'000, 'x'), "video/mp4");
    sandbox.json("/_control/trace");

    const std::vector<Json> lines = linesOf(file.path);
    COMPARE(lines.size(), 4u, "");
    COMPARE(lines[0]["method"], "OLD", "appended");
    COMPARE(lines[1]["host"], "127.0.0.4:" + std::to_string(sandbox.port()), "");
    COMPARE(lines[1]["path"], "/do", "");
    COMPARE(lines[1]["query"], "start=b&action=a%2Fb&z=%E9%95%BF+%26", "");
    COMPARE(lines[1]["headers"]["X-Probe"], "one, two", "");
    COMPARE(lines[1]["status"], 404, "");
    VERIFY(!lines[1].contains("body") && !lines[1]["headers"].contains("REMOTE_ADDR"),
        lines[1].dump());
    COMPARE(lines[2]["body"], "b=2&a=1%2B", "");
    COMPARE(lines[2]["body_size"], 10, "");
    COMPARE(lines[3]["body_size"], 70'000, "");
    VERIFY(!lines[3].contains("body"), "only forms are kept");
    COMPARE(sandbox.traced().size(), 3u, "");
    COMPARE(sandbox.json("/_control/trace?since=2")["requests"].size(), 1u, "");
    COMPARE(sandbox.json("/_control/trace?since=3")["next"], 3, "");
});

const Case beforeReply("an entry is on disk before its answer leaves", [] {
    const TemporaryFile file;
    Sandbox sandbox({"--trace", file.path});
    sandbox.control("faults", R"({"path":"/portal/plain.html","delay_ms":100000})");
    std::thread waiting([&] { VERIFY(!sandbox.get(page), "its answer never leaves"); });
    sandbox.waitForRequests(1);
    COMPARE(linesOf(file.path).size(), 1u, "");
    sandbox.process().send(SIGTERM);
    sandbox.process().wait();
    waiting.join();
});

const Case faults("faults spoil the next matching answers, and those only", [] {
    const Sandbox sandbox;
    const std::string query = "/do?action=base/platform/portal&start=appUpdateInfo&cur_bulid_no=1";
    const auto ask = [&] { return sandbox.get(query, 4); };

    COMPARE(sandbox.control(
                "faults", R"({"start":"appUpdateInfo","times":2,"status":503,"body":"<html>"})"),
        200, "");
    COMPARE(sandbox.control("faults",
                R"({"start":"appUpdateInfo","body":{"code":"200"},"headers":{"X-A":"b"}})"),
        200, "");
    COMPARE(sandbox.get(page)->status, 200, "another request");
    for (int i = 0; i < 2; ++i) {
        const httplib::Result spoilt = ask();
        COMPARE(spoilt->status, 503, "");
        COMPARE(spoilt->body, "<html>", "");
    }
    const httplib::Result third = ask();
    COMPARE(third->body, R"({"code":"200"})", "");
    COMPARE(third->get_header_value("X-A"), "b", "");
    COMPARE(Json::parse(ask()->body)["code"], 200, "used up");

    sandbox.control("faults", R"({"action":"base/platform/portal","cut":true})");
    size_t promised = 0;
    std::string got;
    const httplib::Result cut = sandbox.client(4).Get(
        query,
        [&](const httplib::Response& response) {
            promised = std::stoul(response.get_header_value("Content-Length"));
            return true;
        },
        [&](const char* data, size_t size) {
            got.append(data, size);
            return true;
        });
    VERIFY(!cut, "");
    VERIFY(!got.empty() && got.size() < promised, got);

    sandbox.control("faults", R"({"path":"/do","huge":5000000})");
    VERIFY(ask()->body.size() > 5'000'000, "");
    sandbox.control("faults", R"({"path":"/do","body":""})");
    COMPARE(ask()->body, "", "");
    sandbox.control("faults", R"({"path":"/do","status":500})");
    sandbox.control("reset");
    COMPARE(ask()->status, 200, "cleared");
});

const Case settings("an operation's data or whole envelope can be set until the reset", [] {
    const Sandbox sandbox;
    const auto ask
        = [&] { return sandbox.json("/do?action=base/platform/portal&start=appUpdateInfo", 4); };
    sandbox.control("settings", R"({"start":"appUpdateInfo","data":{"bulid_no":"999"}})");
    COMPARE(ask()["data"]["bulid_no"], "999", "");
    COMPARE(ask()["code"], 200, "");
    sandbox.control("settings", R"({"start":"appUpdateInfo","envelope":[1]})");
    COMPARE(ask(), Json::array({1}), "");
    sandbox.control("reset");
    VERIFY(ask().is_object(), "");
});

const Case badControls("a control that cannot be understood is refused and changes nothing", [] {
    const Sandbox sandbox;
    for (const std::string body :
        {"", "{", "[]", "{}", R"({"status":500})", R"({"path":1})", R"({"path":"/","times":-1})",
            R"({"path":"/","typo":1})", R"({"path":"/","delay_ms":"1"})"})
        COMPARE(sandbox.control("faults", body), 400, body);
    for (const std::string body :
        {"", "{}", R"({"start":"x"})", R"({"data":1})", R"({"start":1,"data":1})"})
        COMPARE(sandbox.control("settings", body), 400, body);
    COMPARE(sandbox.control("made-up"), 404, "");
    COMPARE(sandbox.client(2).Get("/_control/trace")->status, 404, "at the base address only");
    COMPARE(sandbox.get(page)->status, 200, "");
});

const Case latency("latency delays every answer but the control's", [] {
    using namespace std::chrono;
    const Sandbox sandbox({"--latency", "300"});
    const auto before = steady_clock::now();
    VERIFY(sandbox.get(page), "");
    VERIFY(steady_clock::now() - before >= 300ms, "");
});

} // namespace
