#include "push/BrokerProcess.h"

#include "http/OpenFile.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sandbox::BrokerProcess {

namespace {

    //! A TCP socket, closed at the end of its block.
    class Socket
    {
    public:
        Socket(Host host, int port)
            : m_descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
        {
            m_address.sin_family = AF_INET;
            m_address.sin_port = htons(uint16_t(port));
            inet_pton(AF_INET, addressOf(host).c_str(), &m_address.sin_addr);
        }
        Socket(const Socket &) = delete;
        Socket &operator=(const Socket &) = delete;
        ~Socket() { close(m_descriptor); }

        bool bind() { return ::bind(m_descriptor, address(), sizeof m_address) == 0; }
        bool connect() { return ::connect(m_descriptor, address(), sizeof m_address) == 0; }
        int port()
        {
            socklen_t size = sizeof m_address;
            getsockname(m_descriptor, address(), &size);
            return ntohs(m_address.sin_port);
        }

    private:
        sockaddr *address() { return reinterpret_cast<sockaddr *>(&m_address); }

        int m_descriptor;
        sockaddr_in m_address {};
    };

    // A user's path often lacks the folder where servers live.
    std::string program()
    {
        const char *path = getenv("PATH");
        std::istringstream folders((path ? path : "") + std::string(":/usr/sbin:/usr/local/sbin"));
        for (std::string folder; std::getline(folders, folder, ':');) {
            const std::string file = folder + "/mosquitto";
            if (!folder.empty() && access(file.c_str(), X_OK) == 0)
                return file;
        }
        throw std::runtime_error("the program \"mosquitto\" is not installed");
    }

    bool hasEnded(pid_t pid, int options)
    {
        siginfo_t info {};
        while (waitid(P_PID, id_t(pid), &info, WEXITED | WNOWAIT | options) != 0) {
            if (errno != EINTR)
                return true;
        }
        return info.si_pid == pid;
    }

} // namespace

pid_t start(const std::filesystem::path &configuration, const std::filesystem::path &log)
{
    const std::string file = program();
    const char *const arguments[] {file.c_str(), "-c", configuration.c_str(), nullptr};
    const OpenFile output(log.string(), O_WRONLY | O_CREAT | O_TRUNC);
    const pid_t parent = getpid();
    const pid_t pid = fork();
    if (pid < 0)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (pid > 0)
        return pid;

    // Other threads may have held any lock: from here on system calls only.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    dup2(output.descriptor(), STDOUT_FILENO);
    dup2(output.descriptor(), STDERR_FILENO);
    execv(file.c_str(), const_cast<char *const *>(arguments));
    _exit(EXIT_FAILURE);
}

bool isRunning(pid_t pid)
{
    return !hasEnded(pid, WNOHANG);
}

void waitForEnd(pid_t pid)
{
    hasEnded(pid, 0);
}

void reap(pid_t pid)
{
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) { }
}

int freePort(Host host)
{
    Socket socket(host, 0);
    if (!socket.bind())
        throw std::system_error(errno, std::generic_category(), "a port for the broker");
    return socket.port();
}

bool accepts(Host host, int port)
{
    return Socket(host, port).connect();
}

} // namespace sandbox::BrokerProcess
