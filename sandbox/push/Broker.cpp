#include "push/Broker.h"

#include "push/BrokerProcess.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <iostream>

namespace sandbox {

namespace {

    using namespace std::chrono_literals;

    constexpr int mostAttempts = 3;
    constexpr auto startTimeout = 5s;
    constexpr auto startPoll = 5ms;
    constexpr const char *logName = "broker.log";

    std::string lastLineOf(const std::filesystem::path &path)
    {
        std::string last;
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);)
            last = line;
        return last;
    }

} // namespace

const BrokerUser Broker::device {"Sb3kUyPz8VdN5wJqFa6TsB", "Sb9gCmXr4HoL7eKtZi2WvY"};
const BrokerUser Broker::school {"school", "Sb5jQnWu6GbE8rDfXp1MzA"};

Broker::Broker(const Certificate &certificate)
    : m_certificate(certificate)
    , m_supervisor(&Broker::supervise, this)
{
}

Broker::~Broker()
{
    end();
    m_supervisor.join();
}

std::optional<BrokerPorts> Broker::ports()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_state != State::Starting; });
    return m_state == State::Failed ? std::nullopt : std::optional(m_ports);
}

void Broker::stop()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_state != State::Starting; });
    // Asked to end it writes down what waits for its clients.
    stopProcess(lock, SIGTERM);
}

void Broker::start()
{
    std::unique_lock lock(m_mutex);
    m_wanted = true;
    if (m_state == State::Stopped)
        m_state = State::Starting;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_state != State::Starting; });
}

void Broker::end()
{
    std::unique_lock lock(m_mutex);
    m_ending = true;
    stopProcess(lock, SIGKILL);
    m_folder.remove();
}

void Broker::stopProcess(std::unique_lock<std::mutex> &lock, int signal)
{
    m_wanted = false;
    if (m_pid != 0)
        kill(m_pid, signal);
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_pid == 0; });
}

void Broker::supervise()
{
    std::unique_lock lock(m_mutex);
    int failures = 0;
    while (!m_ending) {
        m_changed.wait(lock, [this] { return m_wanted || m_ending; });
        if (m_ending)
            return;
        try {
            failures = runOnce(lock) ? 0 : failures + 1;
        } catch (const std::exception &error) {
            return giveUp(error.what());
        }
        if (failures == mostAttempts)
            return giveUp("the broker does not start: " + lastLineOf(m_folder.path() / logName));
    }
}

void Broker::giveUp(const std::string &reason)
{
    std::cerr << "vant-sandbox: no push: " << reason << std::endl;
    m_state = State::Failed;
    m_changed.notify_all();
}

//! From start to end of one process; whether it ever accepted connections.
bool Broker::runOnce(std::unique_lock<std::mutex> &lock)
{
    if (!m_hasRun)
        m_ports = {BrokerProcess::freePort(Host::Rb), BrokerProcess::freePort(Host::Tls)};
    const auto configuration
        = writeBrokerFiles(m_folder.path(), m_ports, device, school, appId, m_certificate);
    m_pid = BrokerProcess::start(configuration, m_folder.path() / logName);
    const pid_t pid = m_pid;

    lock.unlock();
    const auto deadline = std::chrono::steady_clock::now() + startTimeout;
    bool isUp = false;
    while (!isUp && BrokerProcess::isRunning(pid)) {
        isUp = acceptsConnections();
        if (!isUp && std::chrono::steady_clock::now() > deadline)
            kill(pid, SIGKILL);
        if (!isUp)
            std::this_thread::sleep_for(startPoll);
    }
    lock.lock();
    if (isUp) {
        m_hasRun = true;
        m_state = State::Up;
        m_changed.notify_all();
        lock.unlock();
        BrokerProcess::waitForEnd(pid);
        lock.lock();
    }
    BrokerProcess::reap(pid);
    m_pid = 0;
    m_state = m_wanted ? State::Starting : State::Stopped;
    m_changed.notify_all();
    return isUp;
}

bool Broker::acceptsConnections() const
{
    return BrokerProcess::accepts(Host::Rb, m_ports.plain)
        && BrokerProcess::accepts(Host::Tls, m_ports.tls);
}

} // namespace sandbox
