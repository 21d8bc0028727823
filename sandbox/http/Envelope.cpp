#include "http/Envelope.h"

namespace sandbox {

Envelope success(Json data)
{
    Envelope envelope;
    envelope.data = std::move(data);
    return envelope;
}

Envelope refusal(int code, std::string msg)
{
    Envelope envelope;
    envelope.code = code;
    envelope.msg = std::move(msg);
    return envelope;
}

Reply toReply(const Envelope &envelope)
{
    Json body {{"code", envelope.code}};
    if (envelope.msg)
        body["msg"] = *envelope.msg;
    body["data"] = envelope.data;
    Reply reply = jsonReply(body);
    reply.headers = envelope.headers;
    return reply;
}

Reply jsonReply(const Json &body, int status)
{
    Reply reply;
    reply.status = status;
    reply.contentType = "application/json;charset=UTF-8";
    // What a client sent may be no UTF-8; showing it must not fail.
    reply.body = body.dump(-1, ' ', false, Json::error_handler_t::replace);
    return reply;
}

} // namespace sandbox
