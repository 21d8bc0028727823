#include "push/Publisher.h"

#include "http/Addresses.h"

#include <mosquitto.h>

#include <chrono>
#include <memory>
#include <stdexcept>

namespace sandbox {

namespace {

    constexpr int atLeastOnce = 1;
    constexpr int keepAliveSeconds = 10;
    constexpr int turnMilliseconds = 200;
    constexpr std::chrono::seconds patience {5};

    void check(int result)
    {
        if (result != MOSQ_ERR_SUCCESS)
            throw std::runtime_error(std::string("push: ") + mosquitto_strerror(result));
    }

} // namespace

void publish(int port, const BrokerUser &user, const std::string &topic, const std::string &payload)
{
    [[maybe_unused]] static const int ready = mosquitto_lib_init();
    bool taken = false;
    const std::unique_ptr<mosquitto, decltype(&mosquitto_destroy)> client(
        mosquitto_new(nullptr, true, &taken), &mosquitto_destroy);
    mosquitto_publish_callback_set(
        client.get(), [](mosquitto *, void *flag, int) { *static_cast<bool *>(flag) = true; });
    check(mosquitto_username_pw_set(client.get(), user.name.c_str(), user.password.c_str()));
    check(mosquitto_connect(client.get(), addressOf(Host::Rb).c_str(), port, keepAliveSeconds));
    check(mosquitto_publish(client.get(), nullptr, topic.c_str(), int(payload.size()),
        payload.data(), atLeastOnce, false));
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!taken) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("push: the broker does not take the message");
        check(mosquitto_loop(client.get(), turnMilliseconds, 1));
    }
    mosquitto_disconnect(client.get());
}

} // namespace sandbox
