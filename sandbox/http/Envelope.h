#pragma once

#include "http/Message.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace sandbox {

using Json = nlohmann::ordered_json;

inline constexpr int codeOk = 200;
inline constexpr int codeUnbound = 8888; //!< the WeChat identity belongs to no account yet

//! The platform's answer to an operation: {"code", "msg", "data"}.
struct Envelope
{
    int code = codeOk;
    std::optional<std::string> msg = "操作成功"; //!< absent: the member is left out
    Json data;
    Headers headers; //!< cookies that go with it
};

Envelope success(Json data);
Envelope refusal(int code, std::string msg);

Reply toReply(const Envelope &envelope);
Reply jsonReply(const Json &body, int status = 200);

} // namespace sandbox
