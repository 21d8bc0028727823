#include "control/Fault.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace sandbox {

namespace {

    constexpr size_t mostBytes = 1024UL * 1024 * 1024;

    bool isCount(const Json &value)
    {
        return value.is_number_unsigned()
            && value.get<size_t>() <= size_t(std::numeric_limits<int>::max());
    }
    bool isString(const Json &value)
    {
        return value.is_string();
    }
    bool isBoolean(const Json &value)
    {
        return value.is_boolean();
    }
    bool isObject(const Json &value)
    {
        return value.is_object();
    }
    bool isRole(const Json &value)
    {
        return std::ranges::any_of(allHosts, [&](Host host) {
            return value.is_string() && value.get<std::string>() == roleOf(host);
        });
    }

    struct Member
    {
        std::string_view name;
        bool (*accepts)(const Json &);
        bool addresses = false; //!< says which requests are meant
    };

    constexpr Member members[] {
        {"action", isString, true},
        {"start", isString, true},
        {"path", isString, true},
        {"method", isString, true},
        {"host", isRole, true},
        {"params", isObject, true},
        {"times", isCount},
        {"skip", isCount},
        {"status", isCount},
        {"body", [](const Json &) { return true; }},
        {"headers", isObject},
        {"delay_ms", isCount},
        {"cut", isBoolean},
        {"huge",
            [](const Json &value) { return isCount(value) && value.get<size_t>() <= mostBytes; }},
        {"unhandled", isBoolean},
        {"lose", isBoolean},
        {"reset", isBoolean},
        {"dribble_ms", isCount},
        {"half_body", isBoolean},
    };

    std::string textOf(const Json &value)
    {
        return value.is_string() ? value.get<std::string>() : value.dump();
    }

    void setHeader(Reply &reply, const std::string &name, const std::string &value)
    {
        if (name == "Content-Type")
            reply.contentType = value;
        else
            reply.headers.emplace_back(name, value);
    }

} // namespace

Fault::Fault(Json description)
    : m_what(std::move(description))
{
    if (!m_what.is_object())
        throw std::invalid_argument("a fault is a JSON object");
    bool addressed = false;
    for (const auto &[name, value] : m_what.items()) {
        const auto member = std::ranges::find(members, std::string_view(name), &Member::name);
        if (member == std::end(members))
            throw std::invalid_argument("a fault has no \"" + name + "\"");
        if (!member->accepts(value))
            throw std::invalid_argument("\"" + name + "\" cannot be " + value.dump());
        addressed = addressed || member->addresses;
    }
    if (!addressed)
        throw std::invalid_argument("a fault needs one of \"action\", \"start\", \"path\", "
                                    "\"method\", \"host\" and \"params\"");
}

bool Fault::matches(const Request &request) const
{
    const auto agrees = [&](const char *name, std::string_view actual) {
        return !m_what.contains(name) || m_what[name].get<std::string>() == actual;
    };
    if (m_what.contains("params"))
        for (const auto &[name, value] : m_what["params"].items())
            if (request.param(name) != textOf(value))
                return false;
    return agrees("action", request.param("action")) && agrees("start", request.param("start"))
        && agrees("path", request.path) && agrees("method", request.method)
        && agrees("host", roleOf(request.host));
}

void Fault::spoil(Reply &reply) const
{
    reply.status = m_what.value("status", reply.status);
    reply.delay += std::chrono::milliseconds(m_what.value("delay_ms", 0));
    reply.cut = m_what.value("cut", false);
    if (halvesBody())
        reply = lostReply(reply.delay);
    reply.reset = m_what.value("reset", false);
    reply.lost = reply.lost || reply.reset || m_what.value("lose", false);
    reply.dribble = std::chrono::milliseconds(m_what.value("dribble_ms", 0));
    if (m_what.contains("body") || m_what.contains("huge"))
        reply.file.clear();
    if (m_what.contains("body"))
        reply.body = textOf(m_what["body"]);
    if (m_what.contains("huge"))
        reply.body
            = R"({"code":200,"msg":")" + std::string(m_what["huge"].get<size_t>(), 'x') + R"("})";
    if (m_what.contains("headers"))
        for (const auto &[name, value] : m_what["headers"].items())
            setHeader(reply, name, textOf(value));
}

} // namespace sandbox
