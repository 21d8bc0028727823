#include "platform/transport/HTTPThread.h"

#include "platform/modules/Module.h"
#include "platform/transport/ServerTrust.h"

#include <QSslCertificate>

#include <condition_variable>
#include <csignal>

namespace {

//! Where there is no library to talk with: whoever asks is told so.
class NoTransferLoop : public TransferLoop
{
public:
    void add(std::shared_ptr<HTTPTransfer> transfer) override
    {
        transfer->end({HTTPTransfer::noTransport, QStringLiteral("the network module is missing")});
    }
    void cancel(const std::shared_ptr<HTTPTransfer> &) override { }
    void turn() override
    {
        std::unique_lock lock(m_mutex);
        m_called.wait(lock, [this] { return m_isCalled; });
        m_isCalled = false;
    }
    void wake() override
    {
        const std::lock_guard lock(m_mutex);
        m_isCalled = true;
        m_called.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_called;
    bool m_isCalled = false;
};

}

HTTPThread::HTTPThread()
{
    QByteArrayList authorities;
    for (const QSslCertificate &authority : ServerTrust::addedAuthorities())
        authorities << authority.toDer();
    m_thread = std::thread([this, authorities] { run(authorities); });
}

HTTPThread::~HTTPThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        if (m_loop)
            m_loop->wake();
    }
    m_thread.join();
}

void HTTPThread::start(std::shared_ptr<HTTPTransfer> transfer)
{
    post({std::move(transfer), true});
}

void HTTPThread::cancel(std::shared_ptr<HTTPTransfer> transfer)
{
    post({std::move(transfer), false});
}

void HTTPThread::post(Order order)
{
    TransferLoop *toWake = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        // The thread takes all that wait at once.
        if (m_orders.empty())
            toWake = m_loop;
        m_orders.push_back(std::move(order));
    }
    // Not under the lock, which the woken thread takes first. The loop is there until the end.
    if (toWake)
        toWake->wake();
}

void HTTPThread::run(const QByteArrayList &authorities)
{
    // The TLS library may write to a connection that the server has closed.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);

    const std::unique_ptr<TransferLoop> loop = makeLoop(authorities);
    {
        const std::lock_guard lock(m_mutex);
        m_loop = loop.get();
    }
    while (takeOrders())
        loop->turn();
    const std::lock_guard lock(m_mutex);
    m_loop = nullptr;
}

std::unique_ptr<TransferLoop> HTTPThread::makeLoop(const QByteArrayList &authorities)
{
    if (const auto *loops = Module::load<TransferLoops>("vant_transport"))
        return loops->make(authorities);
    return std::make_unique<NoTransferLoop>();
}

// False: the end.
bool HTTPThread::takeOrders()
{
    std::vector<Order> orders;
    {
        const std::lock_guard lock(m_mutex);
        if (m_isEnding)
            return false;
        orders.swap(m_orders);
    }
    for (Order &order : orders) {
        if (order.isStart)
            m_loop->add(std::move(order.transfer));
        else
            m_loop->cancel(order.transfer);
    }
    return true;
}
