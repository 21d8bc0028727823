#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace sandbox {

enum class UserType { Pupil = 1, Teacher = 2, Parent = 5 };

//! What is peculiar about signing in with an account.
enum class Quirk { None, RefusedWithoutMessage, NoLoginToken, Locked };

//! Somebody who may sign in, and what the school has on record of them.
struct Account
{
    std::string userCode;
    std::string password;
    UserType type = UserType::Pupil;
    std::string name;
    std::string userNo;
    std::string cardNo;
    std::string sex; //!< "1" male, "2" female
    std::string mobile; //!< empty: none on record
    Quirk quirk = Quirk::None;
    bool active = true;

    //! Id by which the platform knows the user; never changes.
    std::string userId() const { return "u" + userNo; }
};

//! The accounts, good at every school. Those activated while the program runs are forgotten at its
//! end.
class Accounts
{
public:
    Accounts();

    std::optional<Account> byCode(const std::string &userCode) const;
    std::optional<Account> byNumber(const std::string &userNo, const std::string &cardNo) const;
    std::optional<Account> byName(const std::string &name, const std::string &cardNo) const;

    enum class Activation { Done, UnknownUser, AlreadyActive, CodeTaken };
    Activation activate(
        const std::string &userId, const std::string &userCode, const std::string &password);

    void reset();

private:
    std::optional<Account> find(auto matches) const;

    mutable std::mutex m_mutex;
    std::vector<Account> m_accounts;
};

} // namespace sandbox
