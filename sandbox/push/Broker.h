#pragma once

#include "http/TemporaryFolder.h"
#include "push/BrokerFiles.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include <sys/types.h>

namespace sandbox {

//! The push broker: Mosquitto as a child process on loopback, with its own configuration in a
//! temporary folder. Starts beside the construction; ends with this process however that ends.
//! Usable from all threads.
class Broker
{
public:
    static constexpr const char *appId = "Sb7xQeLw2RkM9tYcVn4HgD";
    static const BrokerUser device;
    static const BrokerUser school;

    explicit Broker(const Certificate &certificate);
    ~Broker();

    //! Where it is reached, once it accepts connections; nothing where it cannot be started, which
    //! is said on stderr once.
    std::optional<BrokerPorts> ports();
    //! Ends the process; ports and waiting messages stay for its next start.
    void stop();
    //! Starts it again and waits until it accepts connections.
    void start();
    //! For good: no process and no folder is left.
    void end();

private:
    enum class State { Starting, Up, Stopped, Failed };

    void supervise();
    bool runOnce(std::unique_lock<std::mutex> &lock);
    bool acceptsConnections() const;
    void giveUp(const std::string &reason);
    void stopProcess(std::unique_lock<std::mutex> &lock, int signal);

    const Certificate &m_certificate;
    TemporaryFolder m_folder {"broker"};
    std::mutex m_mutex;
    std::condition_variable m_changed;
    State m_state = State::Starting;
    bool m_wanted = true;
    bool m_ending = false;
    bool m_hasRun = false;
    pid_t m_pid = 0;
    BrokerPorts m_ports;
    // The last member. The system ends the child with the thread that made it, so that one thread
    // makes it always.
    std::thread m_supervisor;
};

} // namespace sandbox
