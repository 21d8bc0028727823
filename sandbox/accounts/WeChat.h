#pragma once

#include "accounts/Accounts.h"
#include "http/Envelope.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace sandbox {

//! The other side of signing in with WeChat: who authorised, and which account that identity is
//! bound to. Two people use WeChat here: "bound", whose identity belongs to student01 from the
//! start, and "newcomer", whose identity belongs to nobody until it is bound.
class WeChat
{
public:
    WeChat();

    //! A code as the authorisation page hands it out; good for one use. Nothing for an unknown
    //! person.
    std::optional<std::string> authorise(const std::string &person);

    //! Takes the code; the person's name, or nothing when the code is unknown or used up.
    std::optional<std::string> redeem(const std::string &code);

    //! user_code of the account bound to the person, empty when there is none.
    std::string accountOf(const std::string &person) const;

    //! The signed identity which a client sends back with the account to bind: "nick", "sign",
    //! "open_id", "union_id", "timestamp".
    static Json identityOf(const std::string &person);

    //! Binds the identity in the request's parameters; false when its signature is not ours.
    bool bind(const Request &request, const Account &account);

    void reset();

private:
    mutable std::mutex m_mutex;
    std::map<std::string, std::string> m_accounts; //!< person → user_code
    std::set<std::string> m_codes; //!< handed out and not used yet
    int m_lastCode = 0;
};

} // namespace sandbox
