#pragma once

#include "platform/transport/HTTPTransfer.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

//! The one thread that talks to servers, for all transfers of a network. Its end ends them all, and
//! nobody is told.
class HTTPThread
{
public:
    HTTPThread();
    ~HTTPThread();
    HTTPThread(const HTTPThread &) = delete;
    HTTPThread &operator=(const HTTPThread &) = delete;

    void start(std::shared_ptr<HTTPTransfer> transfer);
    //! Unless it has ended already, it ends with HTTPTransfer::cancelled.
    void cancel(std::shared_ptr<HTTPTransfer> transfer);

private:
    using Clock = HTTPTransfer::Clock;
    using Transfers = std::map<CURL *, std::shared_ptr<HTTPTransfer>>;
    struct Order
    {
        std::shared_ptr<HTTPTransfer> transfer;
        bool isStart;
    };

    void post(Order order);
    void run();
    bool takeOrders();
    void add(std::shared_ptr<HTTPTransfer> transfer);
    void end(const std::shared_ptr<HTTPTransfer> &transfer, int error, const QString &description);
    void collectEnded();
    void endSilent();
    int patience() const;

    std::vector<void *> m_authorities; // certificates beside the system's
    CURLM *m_multi;
    std::mutex m_mutex;
    std::vector<Order> m_orders;
    bool m_isEnding = false;

    // The thread's alone.
    Transfers m_transfers;
    Clock::time_point m_nextLook; // for transfers that have fallen silent
    std::thread m_thread;
};
