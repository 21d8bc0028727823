#include "Sandbox.h"

#include "Case.h"

#include <chrono>
#include <cstdlib>
#include <thread>

Sandbox::Sandbox(const std::vector<std::string>& arguments)
    : m_process(arguments)
{
    const std::string line = m_process.readLine();
    const std::string prefix = "http://127.0.0.1:";
    if (line.starts_with(prefix))
        m_port = std::atoi(line.c_str() + prefix.size());
    COMPARE(line, prefix + std::to_string(m_port),
        "the first line is the base address and nothing else");
}

std::string Sandbox::base(int host) const
{
    return "http://127.0.0." + std::to_string(host) + ":" + std::to_string(m_port);
}

httplib::Client Sandbox::client(int host) const
{
    return httplib::Client(base(host));
}

httplib::Result Sandbox::get(const std::string& pathAndQuery, int host) const
{
    return client(host).Get(pathAndQuery);
}

Json Sandbox::json(const std::string& pathAndQuery, int host) const
{
    const httplib::Result result = get(pathAndQuery, host);
    COMPARE(result ? result->status : 0, 200, pathAndQuery);
    return result && result->status == 200 ? Json::parse(result->body) : Json();
}

Json Sandbox::portal(
    const std::string& start, const httplib::Params& params, const std::string& site) const
{
    httplib::Params all = params;
    all.emplace("action", "gpl/portal");
    all.emplace("start", start);
    return json(httplib::append_query_params("/" + site + "/do", all));
}

int Sandbox::control(const std::string& what, const std::string& body) const
{
    const httplib::Result result = client().Post("/_control/" + what, body, "application/json");
    return result ? result->status : 0;
}

Json Sandbox::traced() const
{
    return json("/_control/trace")["requests"];
}

void Sandbox::waitForRequests(size_t count) const
{
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + 20s;
    while (traced().size() < count) {
        if (steady_clock::now() > deadline)
            return fail(
                __FILE__, __LINE__, "no " + std::to_string(count) + " requests were traced");
        std::this_thread::yield();
    }
}
