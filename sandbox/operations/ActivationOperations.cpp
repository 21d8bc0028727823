#include "operations/Operations.h"

namespace sandbox {

namespace {

    Envelope verified(const std::optional<Account> &account)
    {
        if (!account)
            return refusal(404, "未找到匹配的用户信息，请核对后重试");
        if (account->active)
            return refusal(409, "该账号已启用，请直接登录");
        return success({{"user_id", account->userId()}, {"user_no", account->userNo},
            {"user_type", int(account->type)}, {"user_name", account->name}});
    }

} // namespace

Envelope verifyAccount(const Call &call, Platform &platform)
{
    return verified(platform.accounts.byNumber(call.param("user_no"), call.param("card_no")));
}

Envelope verifyParentAccount(const Call &call, Platform &platform)
{
    return verified(platform.accounts.byName(call.param("user_name"), call.param("card_no")));
}

Envelope settingAccount(const Call &call, Platform &platform)
{
    if (call.param("user_code").empty() || call.param("user_pwd").empty())
        return refusal(400, "账号和密码不能为空");
    switch (platform.accounts.activate(
        call.param("user_id"), call.param("user_code"), call.param("user_pwd"))) {
    case Accounts::Activation::UnknownUser:
        return refusal(404, "用户不存在");
    case Accounts::Activation::AlreadyActive:
        return refusal(409, "该账号已启用，请直接登录");
    case Accounts::Activation::CodeTaken:
        return refusal(409, "该账号名已被使用，请换一个");
    case Accounts::Activation::Done:
        break;
    }
    return success(nullptr);
}

} // namespace sandbox
