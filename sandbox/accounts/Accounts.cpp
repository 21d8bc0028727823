#include "accounts/Accounts.h"

#include <algorithm>

namespace sandbox {

namespace {

    constexpr auto samePassword = "vant1234";

    std::vector<Account> initialAccounts()
    {
        using enum UserType;
        return {
            {"student01", samePassword, Pupil, "林晓彤", "20230101", "350203201109124524", "2",
                "13850012301"},
            {"student02", samePassword, Pupil, "欧阳子墨", "20230102", "350203201103087613", "1",
                ""},
            {"teacher01", samePassword, Teacher, "沈长青", "T1008", "350204198506230037", "1",
                "13950087654"},
            {"parent01", samePassword, Parent, "林建国", "P2001", "35020319800714231X", "1",
                "13600098765"},
            {"nomsg01", samePassword, Pupil, "单雨桐", "20230103", "350206201106056026", "2", "",
                Quirk::RefusedWithoutMessage},
            {"notoken01", samePassword, Pupil, "解一鸣", "20230104", "350205201108217735", "1", "",
                Quirk::NoLoginToken},
            {"locked01", samePassword, Pupil, "仇思远", "20230105", "350205201101135111", "1", "",
                Quirk::Locked},
            {"special01", "p+w&x=1 %41#/?密码", Pupil, "诸葛·明", "20230106", "350203201112241215",
                "1", ""},
            {"", "", Pupil, "曾可欣", "20240007", "350203201209124522", "2", "", Quirk::None,
                false},
            {"", "", Teacher, "万俟海", "T1011", "35020419900101003x", "1", "", Quirk::None, false},
            {"", "", Parent, "曾德民", "P2007", "350203198209120019", "1", "", Quirk::None, false},
        };
    }

} // namespace

Accounts::Accounts()
    : m_accounts(initialAccounts())
{
}

std::optional<Account> Accounts::find(auto matches) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_accounts.begin(), m_accounts.end(), matches);
    return found == m_accounts.end() ? std::nullopt : std::optional(*found);
}

std::optional<Account> Accounts::byCode(const std::string &userCode) const
{
    return find([&](const Account &a) { return a.active && a.userCode == userCode; });
}

std::optional<Account> Accounts::byNumber(
    const std::string &userNo, const std::string &cardNo) const
{
    return find([&](const Account &a) { return a.userNo == userNo && a.cardNo == cardNo; });
}

std::optional<Account> Accounts::byName(const std::string &name, const std::string &cardNo) const
{
    return find([&](const Account &a) { return a.name == name && a.cardNo == cardNo; });
}

Accounts::Activation Accounts::activate(
    const std::string &userId, const std::string &userCode, const std::string &password)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_accounts.begin(), m_accounts.end(),
        [&](const Account &a) { return a.userId() == userId; });
    if (found == m_accounts.end())
        return Activation::UnknownUser;
    if (found->active)
        return Activation::AlreadyActive;
    for (const Account &other : m_accounts)
        if (other.active && other.userCode == userCode)
            return Activation::CodeTaken;
    found->userCode = userCode;
    found->password = password;
    found->active = true;
    return Activation::Done;
}

void Accounts::reset()
{
    const std::lock_guard lock(m_mutex);
    m_accounts = initialAccounts();
}

} // namespace sandbox
