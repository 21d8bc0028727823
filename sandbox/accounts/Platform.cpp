#include "accounts/Platform.h"

#include "accounts/Signer.h"

namespace sandbox {

void Platform::reset()
{
    accounts.reset();
    weChat.reset();
    notices.reset();
}

std::string credential(std::string_view purpose, const Account &account,
    const std::string &siteCode, const std::string &session)
{
    return Signer::seal(purpose, siteCode + '\n' + session + '\n' + account.userCode);
}

std::optional<Identity> identify(
    const Platform &platform, std::string_view purpose, const std::string &credential)
{
    const auto content = Signer::open(purpose, credential);
    if (!content)
        return {};
    const auto account = platform.accounts.byCode(content->substr(content->rfind('\n') + 1));
    if (!account)
        return {};
    return Identity {*account, content->substr(0, content->find('\n'))};
}

} // namespace sandbox
