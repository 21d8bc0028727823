#include "push/PushService.h"

#include "push/Publisher.h"

#include <openssl/rand.h>

#include <stdexcept>

namespace sandbox {

namespace {

    std::string madeId()
    {
        uint64_t number = 0;
        RAND_bytes(reinterpret_cast<unsigned char *>(&number), sizeof number);
        return std::to_string(number);
    }

    std::string textOf(const Json &message)
    {
        if (message.contains("raw"))
            return message.at("raw");
        Json text = Json::object();
        text["id"] = message.value("id", madeId());
        for (const char *key : {"payload", "title", "body"}) {
            if (message.contains(key))
                text[key] = message.at(key).get<std::string>();
        }
        return text.dump();
    }

} // namespace

void PushService::send(const Json &message)
{
    const std::string to = message.at("to");
    if (to.empty() || to.find_first_of("/+#") != to.npos)
        throw std::runtime_error("\"to\" is no client id");
    const auto ports = m_broker.ports();
    if (!ports)
        throw std::runtime_error("there is no push broker");
    publish(ports->plain, Broker::school, std::string("push/") + Broker::appId + "/" + to,
        textOf(message));
}

void PushService::setRunning(const Json &wish)
{
    if (wish.at("running").get<bool>())
        m_broker.start();
    else
        m_broker.stop();
}

Json PushService::description()
{
    const auto ports = m_broker.ports();
    if (!ports)
        return {{"broker", ""}, {"tls", ""}};
    return {{"broker", "mqtt://" + addressOf(Host::Rb) + ":" + std::to_string(ports->plain)},
        {"tls", "mqtts://" + addressOf(Host::Tls) + ":" + std::to_string(ports->tls)}};
}

std::string PushService::toml()
{
    return "\n[push]\nbroker = \"" + description().at("broker").get<std::string>()
        + "\"\napp_id = \"" + Broker::appId + "\"\napp_key = \"" + Broker::device.name
        + "\"\napp_secret = \"" + Broker::device.password + "\"\n";
}

} // namespace sandbox
