#include "http/Message.h"

#include <algorithm>
#include <cctype>

namespace sandbox {

namespace {

    bool sameIgnoringCase(std::string_view a, std::string_view b)
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
            [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
    }

} // namespace

std::string Request::param(const std::string &name) const
{
    const auto found = params.find(name);
    return found == params.end() ? std::string() : found->second;
}

std::string Request::header(std::string_view name) const
{
    for (const auto &[key, value] : headers)
        if (sameIgnoringCase(key, name))
            return value;
    return {};
}

std::string Request::cookie(std::string_view name) const
{
    const std::string all = header("Cookie");
    for (size_t at = 0; at < all.size();) {
        const size_t end = std::min(all.find(';', at), all.size());
        std::string_view pair = std::string_view(all).substr(at, end - at);
        pair.remove_prefix(std::min(pair.find_first_not_of(' '), pair.size()));
        const size_t equals = pair.find('=');
        if (equals != pair.npos && pair.substr(0, equals) == name)
            return std::string(pair.substr(equals + 1));
        at = end + 1;
    }
    return {};
}

bool Request::isForm() const
{
    return method == "POST"
        && header("Content-Type").starts_with("application/x-www-form-urlencoded");
}

Reply textReply(int status, std::string text)
{
    Reply reply;
    reply.status = status;
    reply.body = std::move(text);
    return reply;
}

Reply lostReply(std::chrono::milliseconds delay)
{
    Reply reply;
    reply.status = 0;
    reply.delay = delay;
    reply.lost = true;
    return reply;
}

} // namespace sandbox
