#include "Child.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

std::string Child::program;

namespace {

constexpr auto patience = std::chrono::seconds(20);
using Deadline = std::chrono::steady_clock::time_point;

bool readable(int descriptor, Deadline deadline)
{
    using namespace std::chrono;
    const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
    pollfd waiting{descriptor, POLLIN, 0};
    return poll(&waiting, 1, int(std::max<long>(left.count(), 0))) > 0;
}

std::string readToEnd(int descriptor, Deadline deadline)
{
    std::string text;
    char buffer[4096];
    while (readable(descriptor, deadline)) {
        const ssize_t got = read(descriptor, buffer, sizeof buffer);
        if (got <= 0)
            break;
        text.append(buffer, size_t(got));
    }
    return text;
}

} // namespace

Child::Child(const std::vector<std::string>& arguments)
{
    int output[2];
    int errors[2];
    if (pipe2(output, O_CLOEXEC) != 0 || pipe2(errors, O_CLOEXEC) != 0)
        std::abort();
    std::vector<char*> argv{program.data()};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    m_process = fork();
    if (m_process == 0) {
        dup2(output[1], STDOUT_FILENO);
        dup2(errors[1], STDERR_FILENO);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(output[1]);
    close(errors[1]);
    m_output = output[0];
    m_errors = errors[0];
}

Child::~Child()
{
    if (m_process > 0) {
        send(SIGKILL);
        wait();
    }
}

std::string Child::readLine()
{
    std::string line;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (char c; readable(m_output, deadline) && read(m_output, &c, 1) == 1 && c != '\n';)
        line += c;
    return line;
}

void Child::send(int signal)
{
    kill(m_process, signal);
}

Ending Child::wait()
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    Ending ending;
    ending.output = readToEnd(m_output, deadline);
    ending.errors = readToEnd(m_errors, deadline);
    if (std::chrono::steady_clock::now() >= deadline)
        send(SIGKILL);
    int status = 0;
    waitpid(std::exchange(m_process, -1), &status, 0);
    if (WIFEXITED(status))
        ending.exitCode = WEXITSTATUS(status);
    close(m_output);
    close(m_errors);
    return ending;
}
