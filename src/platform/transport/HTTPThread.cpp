#include "platform/transport/HTTPThread.h"

#include "platform/transport/ServerTrust.h"

#include <QSslCertificate>

#include <openssl/ssl.h>

#include <csignal>

namespace {

using namespace std::chrono_literals;

constexpr long connectionsToAServer = 6;
constexpr auto longestSleep = std::chrono::hours(1);

CURLcode trustAdded(CURL *, void *context, void *authorities)
{
    X509_STORE *store = SSL_CTX_get_cert_store(static_cast<SSL_CTX *>(context));
    for (void *certificate : *static_cast<const std::vector<void *> *>(authorities))
        X509_STORE_add_cert(store, static_cast<X509 *>(certificate));
    return CURLE_OK;
}

}

HTTPThread::HTTPThread()
{
    for (const QSslCertificate &authority : ServerTrust::addedAuthorities()) {
        const QByteArray der = authority.toDer();
        const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
        if (X509 *certificate = d2i_X509(nullptr, &bytes, long(der.size())))
            m_authorities.push_back(certificate);
    }
    [[maybe_unused]] static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
    m_multi = curl_multi_init();
    curl_multi_setopt(m_multi, CURLMOPT_MAX_HOST_CONNECTIONS, connectionsToAServer);
    m_thread = std::thread([this] { run(); });
}

HTTPThread::~HTTPThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    curl_multi_wakeup(m_multi);
    m_thread.join();
    for (const auto &[easy, transfer] : m_transfers)
        curl_multi_remove_handle(m_multi, easy);
    m_transfers.clear();
    curl_multi_cleanup(m_multi);
    for (void *certificate : m_authorities)
        X509_free(static_cast<X509 *>(certificate));
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
    bool isFirst = false;
    {
        const std::lock_guard lock(m_mutex);
        isFirst = m_orders.empty();
        m_orders.push_back(std::move(order));
    }
    // The thread takes all that wait at once.
    if (isFirst)
        curl_multi_wakeup(m_multi);
}

void HTTPThread::run()
{
    // The TLS library may write to a connection that the server has closed.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    m_nextLook = Clock::now() + longestSleep;
    while (takeOrders()) {
        int running = 0;
        curl_multi_perform(m_multi, &running);
        collectEnded();
        endSilent();
        curl_multi_poll(m_multi, nullptr, 0, patience(), nullptr);
    }
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
            add(std::move(order.transfer));
        else
            end(order.transfer, HTTPTransfer::cancelled, QStringLiteral("cancelled"));
    }
    return true;
}

void HTTPThread::add(std::shared_ptr<HTTPTransfer> transfer)
{
    CURL *easy = transfer->prepare(&trustAdded, &m_authorities);
    m_nextLook = std::min(m_nextLook, transfer->deadline());
    m_transfers.emplace(easy, std::move(transfer));
    curl_multi_add_handle(m_multi, easy);
}

void HTTPThread::end(
    const std::shared_ptr<HTTPTransfer> &transfer, int error, const QString &description)
{
    const auto found = m_transfers.find(transfer->handle());
    if (found == m_transfers.end())
        return;
    curl_multi_remove_handle(m_multi, found->first);
    m_transfers.erase(found);
    transfer->finish(error, description);
}

void HTTPThread::collectEnded()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        const CURLcode result = message->data.result;
        CURL *easy = message->easy_handle;
        const auto found = m_transfers.find(easy);
        const std::shared_ptr<HTTPTransfer> transfer = std::move(found->second);
        m_transfers.erase(found);
        curl_multi_remove_handle(m_multi, easy);
        transfer->finish(result);
    }
}

// Whoever has been heard of meanwhile only moves the next look.
void HTTPThread::endSilent()
{
    const auto now = Clock::now();
    if (now < m_nextLook)
        return;
    m_nextLook = now + longestSleep;
    std::vector<std::shared_ptr<HTTPTransfer>> silent;
    for (const auto &[easy, transfer] : m_transfers) {
        if (transfer->deadline() <= now)
            silent.push_back(transfer);
        else
            m_nextLook = std::min(m_nextLook, transfer->deadline());
    }
    for (const auto &transfer : silent)
        end(transfer, CURLE_OPERATION_TIMEDOUT, QStringLiteral("no answer for too long"));
}

int HTTPThread::patience() const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_nextLook - Clock::now());
    return int(std::max(left, 0ms).count());
}
