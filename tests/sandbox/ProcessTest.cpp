#include "Case.h"
#include "Sandbox.h"

#include <algorithm>
#include <csignal>
#include <set>
#include <thread>

namespace {

long lines(const std::string& text)
{
    return std::count(text.begin(), text.end(), '\n');
}

const Case badArguments("bad arguments end it with 2 and one line that names them", [] {
    const struct {
        std::vector<std::string> arguments;
        std::string named;
    } rows[]{
        {{"--bogus"}, "--bogus"},
        {{"extra"}, "extra"},
        {{"--port"}, "--port"},
        {{"--port", ""}, "--port"},
        {{"--port", "http"}, "--port"},
        {{"--port", "65536"}, "--port"},
        {{"--port", "80x"}, "--port"},
        {{"--schools", "-1"}, "--schools"},
        {{"--latency", "1.5"}, "--latency"},
        {{"--trace", "/nonexistent/trace.jsonl"}, "/nonexistent/trace.jsonl"},
    };
    for (const auto& row : rows) {
        const Ending ending = Child(row.arguments).wait();
        COMPARE(ending.exitCode, 2, row.named);
        COMPARE(ending.output, "", row.named);
        COMPARE(lines(ending.errors), 1, row.named);
        VERIFY(ending.errors.find(row.named) != std::string::npos, ending.errors);
    }
});

const Case questions("--help and --version answer and end well", [] {
    for (const std::string question : {"--help", "--version"}) {
        const Ending ending = Child({question}).wait();
        COMPARE(ending.exitCode, 0, question);
        VERIFY(ending.output.find("vant-sandbox") != std::string::npos, question);
        COMPARE(ending.errors, "", question);
    }
});

const Case portTaken("a port that another sandbox has is not shared with it", [] {
    const Sandbox first;
    const Ending ending = Child({"--port", std::to_string(first.port())}).wait();
    COMPARE(ending.exitCode, 1, "");
    COMPARE(lines(ending.errors), 1, "");
    VERIFY(ending.errors.find(std::to_string(first.port())) != std::string::npos, ending.errors);
});

const Case portGiven("a port that is asked for is the one of all addresses", [] {
    int port = 0;
    {
        const Sandbox any;
        port = any.port();
    }
    const Sandbox again({"--port", std::to_string(port)});
    COMPARE(again.port(), port, "");
    for (int host = 1; host <= 9; ++host)
        VERIFY(again.get("/", host), "127.0.0." + std::to_string(host));
});

const Case ending("a signal ends it with 0, busy connections or not", [] {
    for (const int signal : {SIGTERM, SIGINT}) {
        Sandbox sandbox;
        httplib::Client idle = sandbox.client();
        idle.set_keep_alive(true);
        VERIFY(idle.Get("/portal/plain.html"), "");
        std::thread waiting(
            [&] { VERIFY(!sandbox.get("/portal/slow.html?ms=100000"), "cut off"); });
        sandbox.waitForRequests(2);
        sandbox.process().send(signal);
        COMPARE(sandbox.process().wait().exitCode, 0, std::to_string(signal));
        waiting.join();
    }
});

const Case certificate("the TLS host is trusted only by those who were given its certificate", [] {
    const Sandbox sandbox;
    httplib::SSLClient client("127.0.0.10", sandbox.port());
    const httplib::Result stranger = client.Get("/portal/plain.html");
    VERIFY(!stranger && stranger.error() == httplib::Error::SSLServerVerification,
        httplib::to_string(stranger.error()));

    const std::string pem = sandbox.get("/_control/certificate.pem")->body;
    BIO* memory = BIO_new_mem_buf(pem.data(), int(pem.size()));
    X509* certificate = PEM_read_bio_X509(memory, nullptr, nullptr, nullptr);
    X509_STORE* store = X509_STORE_new();
    X509_STORE_add_cert(store, certificate);
    httplib::SSLClient friendly("127.0.0.10", sandbox.port());
    friendly.set_ca_cert_store(store);
    const httplib::Result known = friendly.Get("/portal/plain.html");
    COMPARE(known ? known->status : 0, 200, httplib::to_string(known.error()));
    X509_free(certificate);
    BIO_free(memory);
});

const Case deployment("the client configuration names the hosts as they are", [] {
    const Sandbox sandbox;
    const std::string toml = sandbox.get("/deployment.toml")->body;
    const std::pair<std::string, int> rows[]{{"regions", 2}, {"rb", 1}, {"public", 3}, {"base", 4},
        {"portal", 1}, {"official", 5}, {"content", 6}};
    for (const auto& [key, host] : rows) {
        const std::string line = "\n" + key + " = \"" + sandbox.base(host) + "/\"\n";
        VERIFY(toml.find(line) != std::string::npos, key);
    }
});

} // namespace
