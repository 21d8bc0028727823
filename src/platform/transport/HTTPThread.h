#pragma once

#include "platform/transport/TransferLoop.h"

#include <mutex>
#include <thread>
#include <vector>

//! The one thread that talks to servers, for all transfers of a network. Its end ends them all, and
//! nobody is told. It loads what it talks with first, beside whatever else the program starts.
class HTTPThread
{
public:
    HTTPThread();
    ~HTTPThread();
    Q_DISABLE_COPY_MOVE(HTTPThread)

    void start(std::shared_ptr<HTTPTransfer> transfer);
    //! Unless it has ended already, it ends with HTTPTransfer::cancelled.
    void cancel(std::shared_ptr<HTTPTransfer> transfer);

private:
    struct Order
    {
        std::shared_ptr<HTTPTransfer> transfer;
        bool isStart;
    };

    void post(Order order);
    void run(const QByteArrayList &authorities);
    std::unique_ptr<TransferLoop> makeLoop(const QByteArrayList &authorities);
    bool takeOrders();

    std::mutex m_mutex;
    std::vector<Order> m_orders;
    bool m_isEnding = false;
    TransferLoop *m_loop = nullptr; //!< while there is one
    std::thread m_thread;
};
