#include "control/Trace.h"

#include <algorithm>

namespace sandbox {

namespace {

    Json headersOf(const Request &request)
    {
        Json headers = Json::object();
        for (const auto &[name, value] : request.headers) {
            if (headers.contains(name))
                headers[name] = headers[name].get<std::string>() + ", " + value;
            else
                headers[name] = value;
        }
        return headers;
    }

} // namespace

bool Trace::openFile(const std::string &path)
{
    m_file.open(path, std::ios::app);
    return m_file.is_open();
}

void Trace::record(const Request &request, const Addresses &addresses, const Reply &reply)
{
    Json entry {{"method", request.method}, {"host", addresses.authority(request.host)},
        {"peer", request.peer}, {"path", request.path}, {"query", request.query},
        {"headers", headersOf(request)}, {"body_size", request.body.size()}};
    if (request.isForm())
        entry["body"] = request.body;
    entry["status"] = reply.status;
    if (reply.lost)
        entry["lost"] = true;

    const std::lock_guard lock(m_mutex);
    if (m_file.is_open())
        m_file << entry.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
    m_entries.push_back(std::move(entry));
    if (m_entries.size() > mostKept) {
        m_entries.pop_front();
        ++m_dropped;
    }
}

Json Trace::since(size_t since) const
{
    const std::lock_guard lock(m_mutex);
    const size_t first = std::clamp(since, m_dropped, m_dropped + m_entries.size());
    Json requests = Json::array();
    for (size_t number = first; number < m_dropped + m_entries.size(); ++number)
        requests.push_back(m_entries[number - m_dropped]);
    return {{"next", m_dropped + m_entries.size()}, {"requests", std::move(requests)}};
}

void Trace::clear()
{
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
    m_dropped = 0;
}

} // namespace sandbox
