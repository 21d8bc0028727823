#include "operations/Overrides.h"

#include <stdexcept>

namespace sandbox {

namespace {

    std::optional<Json> lookUp(const std::map<std::string, Json> &answers, const std::string &start)
    {
        const auto found = answers.find(start);
        return found == answers.end() ? std::nullopt : std::optional(found->second);
    }

} // namespace

void Overrides::set(const Json &description)
{
    if (!description.is_object() || !description.contains("start")
        || !description["start"].is_string())
        throw std::invalid_argument(
            "a setting is an object with the name of an operation as \"start\"");
    const auto start = description["start"].get<std::string>();
    const std::lock_guard lock(m_mutex);
    if (description.contains("envelope"))
        m_envelopes[start] = description["envelope"];
    else if (description.contains("data"))
        m_data[start] = description["data"];
    else
        throw std::invalid_argument("a setting needs \"data\" or \"envelope\"");
}

std::optional<Json> Overrides::envelopeFor(const std::string &start) const
{
    const std::lock_guard lock(m_mutex);
    return lookUp(m_envelopes, start);
}

std::optional<Json> Overrides::dataFor(const std::string &start) const
{
    const std::lock_guard lock(m_mutex);
    return lookUp(m_data, start);
}

void Overrides::clear()
{
    const std::lock_guard lock(m_mutex);
    m_envelopes.clear();
    m_data.clear();
}

} // namespace sandbox
