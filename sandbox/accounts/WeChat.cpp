#include "accounts/WeChat.h"

#include "accounts/Signer.h"

#include <chrono>

namespace sandbox {

namespace {

    const std::map<std::string, std::string> nicks {{"bound", "小彤🌱"}, {"newcomer", "夏天的风"}};

    std::string unionId(const std::string &person)
    {
        return "o6_" + Signer::digest("union", person).substr(0, 25);
    }

    std::string signature(const std::string &unionId, const std::string &openId,
        const std::string &nick, const std::string &time)
    {
        return Signer::digest(
            "wechat identity", unionId + '\n' + openId + '\n' + nick + '\n' + time);
    }

} // namespace

WeChat::WeChat()
{
    reset();
}

std::optional<std::string> WeChat::authorise(const std::string &person)
{
    if (!nicks.contains(person))
        return {};
    const std::lock_guard lock(m_mutex);
    std::string code = Signer::seal("wechat code", person + '\n' + std::to_string(++m_lastCode));
    m_codes.insert(code);
    return code;
}

std::optional<std::string> WeChat::redeem(const std::string &code)
{
    const std::lock_guard lock(m_mutex);
    if (m_codes.erase(code) == 0)
        return {};
    const auto content = Signer::open("wechat code", code);
    return content->substr(0, content->find('\n'));
}

std::string WeChat::accountOf(const std::string &person) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_accounts.find(person);
    return found == m_accounts.end() ? std::string() : found->second;
}

Json WeChat::identityOf(const std::string &person)
{
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    const std::string openId = "oX_" + Signer::digest("open", person).substr(0, 25);
    const std::string &nick = nicks.at(person);
    return {{"nick", nick}, {"sign", signature(unionId(person), openId, nick, std::to_string(now))},
        {"open_id", openId}, {"union_id", unionId(person)}, {"timestamp", now}};
}

bool WeChat::bind(const Request &request, const Account &account)
{
    const std::string given = request.param("union_id");
    if (request.param("sign")
        != signature(
            given, request.param("open_id"), request.param("nick"), request.param("timestamp")))
        return false;
    const std::lock_guard lock(m_mutex);
    for (const auto &[person, nick] : nicks)
        if (unionId(person) == given)
            m_accounts[person] = account.userCode;
    return true;
}

void WeChat::reset()
{
    const std::lock_guard lock(m_mutex);
    m_accounts = {{"bound", "student01"}};
    m_codes.clear();
}

} // namespace sandbox
