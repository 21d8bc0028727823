#pragma once

#include "Envelope.h"

#include <mutex>
#include <vector>

namespace sandbox {

//! Faults on demand. Each waits for the next requests that match it and spoils that many answers.
class Faults
{
public:
    //! {"action"?, "start"?, "path"?, "times"?, "status"?, "body"?, "headers"?, "delay_ms"?,
    //! "cut"?, "huge"?}; throws std::invalid_argument that says what is wrong with it.
    void add(const Json &description);
    //! Works the first fault that matches the request into the reply.
    void spoil(const Request &request, Reply &reply);
    void clear();

private:
    struct Fault
    {
        Json what;
        int remaining = 1;
    };

    std::mutex m_mutex;
    std::vector<Fault> m_faults;
};

} // namespace sandbox
