#include "control/Faults.h"

namespace sandbox {

void Faults::add(const Json &description)
{
    Fault fault(description);
    const std::lock_guard lock(m_mutex);
    m_orders.push_back({fault, fault.skip(), fault.times()});
}

Fault Faults::take(const Request &request)
{
    const std::lock_guard lock(m_mutex);
    for (Order &order : m_orders) {
        if (order.times == 0 || !order.fault.matches(request))
            continue;
        if (order.skip > 0) {
            --order.skip;
            continue;
        }
        --order.times;
        return order.fault;
    }
    return {};
}

void Faults::clear()
{
    const std::lock_guard lock(m_mutex);
    m_orders.clear();
}

} // namespace sandbox
