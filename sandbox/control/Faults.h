#pragma once

#include "control/Fault.h"

#include <mutex>
#include <vector>

namespace sandbox {

//! Faults on demand. Each waits for the next requests that match it and spoils that many of them.
class Faults
{
public:
    //! See Fault; throws std::invalid_argument that says what is wrong with the description.
    void add(const Json &description);
    //! The first fault that waits for such a request; the one without effect where there is none.
    Fault take(const Request &request);
    void clear();

private:
    struct Order
    {
        Fault fault;
        int skip = 0;
        int times = 1;
    };

    std::mutex m_mutex;
    std::vector<Order> m_orders;
};

} // namespace sandbox
