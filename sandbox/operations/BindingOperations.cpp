#include "operations/Operations.h"

namespace sandbox {

namespace {

    //! Which of the named parameters is missing, as a refusal.
    std::optional<Envelope> missing(const Call &call, std::initializer_list<const char *> names)
    {
        for (const char *name : names)
            if (call.param(name).empty())
                return refusal(400, std::string("缺少参数：") + name);
        return {};
    }

} // namespace

Envelope bindGeTui(const Call &call, Platform &)
{
    if (const auto refused = missing(call, {"c_id", "user_id", "dev_type"}))
        return *refused;
    return success({{"c_id", call.param("c_id")}, {"user_id", call.param("user_id")}});
}

Envelope unBindGeTui(const Call &call, Platform &)
{
    return missing(call, {"c_id", "user_id"}).value_or(success(nullptr));
}

Envelope bindIm(const Call &call, Platform &)
{
    return missing(call, {"reg_id", "user_id"}).value_or(success(nullptr));
}

} // namespace sandbox
