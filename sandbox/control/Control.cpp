#include "control/Control.h"

#include <charconv>
#include <stdexcept>

namespace sandbox {

namespace {

    constexpr std::string_view root = "/_control/";

    size_t number(const std::string &text)
    {
        size_t value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    }

} // namespace

Control::Control(Platform &platform, FileStore &store, PushService &push, Trace &trace,
    Faults &faults, Overrides &overrides, const Certificate &certificate)
    : m_platform(platform)
    , m_store(store)
    , m_push(push)
    , m_trace(trace)
    , m_faults(faults)
    , m_overrides(overrides)
    , m_certificate(certificate)
{
}

bool Control::owns(const Request &request)
{
    return request.host == Host::Rb && request.path.starts_with(root);
}

Reply Control::answer(const Request &request)
{
    const std::string wish = request.method + " " + request.path.substr(root.size());
    try {
        if (wish == "GET trace")
            return jsonReply(m_trace.since(number(request.param("since"))));
        if (wish == "GET certificate.pem")
            return textReply(200, m_certificate.pem());
        if (wish == "GET storage")
            return jsonReply(m_store.description());
        if (wish == "GET push")
            return jsonReply(m_push.description());
        if (wish == "GET notices")
            return jsonReply(m_platform.notices.description());
        if (wish == "POST push") {
            m_push.send(Json::parse(request.body));
        } else if (wish == "POST broker") {
            m_push.setRunning(Json::parse(request.body));
        } else if (wish == "POST faults") {
            m_faults.add(Json::parse(request.body));
        } else if (wish == "POST settings") {
            m_overrides.set(Json::parse(request.body));
        } else if (wish == "POST notices") {
            m_platform.notices.set(Json::parse(request.body));
        } else if (wish == "POST reset") {
            m_faults.clear();
            m_overrides.clear();
            m_trace.clear();
            m_platform.reset();
            m_store.reset();
            m_push.setRunning({{"running", true}});
        } else {
            return textReply(404, "No such control: " + wish + "\n");
        }
    } catch (
        const std::exception &error) { // what the caller sent is at fault, whichever of them it is
        return textReply(400, std::string(error.what()) + "\n");
    }
    return jsonReply(Json::object());
}

} // namespace sandbox
