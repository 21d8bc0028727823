#pragma once

#include "accounts/Accounts.h"
#include "accounts/WeChat.h"
#include "schools/Notices.h"
#include "schools/Schools.h"

#include <optional>

namespace sandbox {

//! A signed-in user, as a cookie or token tells it.
struct Identity
{
    Account account;
    std::string siteCode;
};

//! Everything the platform knows. Owned by main; used from all threads.
struct Platform
{
    Platform(size_t schoolCount, const Addresses &hosts)
        : addresses(hosts)
        , schools(schoolCount, hosts)
        , notices(hosts)
    {
    }

    const Addresses addresses;
    const Schools schools;
    Accounts accounts;
    WeChat weChat;
    Notices notices;

    //! Forgets what has happened since the start.
    void reset();
};

//! purpose is "token", "mo" or "tmo"; session tells two credentials of one user apart.
std::string credential(std::string_view purpose, const Account &account,
    const std::string &siteCode, const std::string &session = {});
std::optional<Identity> identify(
    const Platform &platform, std::string_view purpose, const std::string &credential);

} // namespace sandbox
