#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

//! How a process ended.
struct Ending {
    int exitCode = -1; //!< -1: by a signal, ours included
    std::string output;
    std::string errors;
};

//! The program under test as a child process; it does not outlive the object.
class Child {
public:
    explicit Child(const std::vector<std::string>& arguments);
    ~Child();
    Child(const Child&) = delete;

    static std::string program;

    std::string readLine();
    void send(int signal);
    //! Waits for its end; one that does not come in good time is brought about.
    Ending wait();

private:
    pid_t m_process = -1;
    int m_output = -1;
    int m_errors = -1;
};
