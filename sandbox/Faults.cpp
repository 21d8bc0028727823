#include "Faults.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace sandbox {

namespace {

    constexpr size_t mostBytes = 1024UL * 1024 * 1024;

    bool isCount(const Json &value)
    {
        return value.is_number_unsigned();
    }
    bool isString(const Json &value)
    {
        return value.is_string();
    }

    struct Member
    {
        std::string_view name;
        bool (*accepts)(const Json &);
    };

    constexpr Member members[] {
        {"action", isString},
        {"start", isString},
        {"path", isString},
        {"times", isCount},
        {"status", isCount},
        {"body", [](const Json &) { return true; }},
        {"headers", [](const Json &value) { return value.is_object(); }},
        {"delay_ms", isCount},
        {"cut", [](const Json &value) { return value.is_boolean(); }},
        {"huge",
            [](const Json &value) { return isCount(value) && value.get<size_t>() <= mostBytes; }},
    };

    bool matches(const Json &fault, const Request &request)
    {
        const auto agrees = [&](const char *name, const std::string &actual) {
            return !fault.contains(name) || fault[name].get<std::string>() == actual;
        };
        return agrees("action", request.param("action")) && agrees("start", request.param("start"))
            && agrees("path", request.path);
    }

    void setHeader(Reply &reply, const std::string &name, const std::string &value)
    {
        if (name == "Content-Type")
            reply.contentType = value;
        else
            reply.headers.emplace_back(name, value);
    }

} // namespace

void Faults::add(const Json &description)
{
    if (!description.is_object())
        throw std::invalid_argument("a fault is a JSON object");
    for (const auto &[name, value] : description.items()) {
        const auto member = std::find_if(std::begin(members), std::end(members),
            [&name = name](const Member &m) { return m.name == name; });
        if (member == std::end(members))
            throw std::invalid_argument("a fault has no \"" + name + "\"");
        if (!member->accepts(value))
            throw std::invalid_argument("\"" + name + "\" cannot be " + value.dump());
    }
    if (!description.contains("action") && !description.contains("start")
        && !description.contains("path"))
        throw std::invalid_argument("a fault needs \"action\", \"start\" or \"path\"");
    const std::lock_guard lock(m_mutex);
    m_faults.push_back({description, description.value("times", 1)});
}

void Faults::spoil(const Request &request, Reply &reply)
{
    std::optional<Json> chosen;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(m_faults.begin(), m_faults.end(), [&](const Fault &fault) {
            return fault.remaining > 0 && matches(fault.what, request);
        });
        if (found == m_faults.end())
            return;
        --found->remaining;
        chosen = found->what;
    }
    const Json &fault = *chosen;
    reply.status = fault.value("status", reply.status);
    reply.delay += std::chrono::milliseconds(fault.value("delay_ms", 0));
    reply.cut = fault.value("cut", false);
    if (fault.contains("body"))
        reply.body
            = fault["body"].is_string() ? fault["body"].get<std::string>() : fault["body"].dump();
    if (fault.contains("huge"))
        reply.body
            = R"({"code":200,"msg":")" + std::string(fault["huge"].get<size_t>(), 'x') + R"("})";
    if (fault.contains("headers"))
        for (const auto &[name, value] : fault["headers"].items())
            setHeader(reply, name, value.is_string() ? value.get<std::string>() : value.dump());
}

void Faults::clear()
{
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
}

} // namespace sandbox
