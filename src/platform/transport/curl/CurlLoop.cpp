#include "platform/transport/curl/CurlLoop.h"

#include <openssl/ssl.h>

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

CurlLoop::CurlLoop(const QByteArrayList &authorities)
    : m_multi(curl_multi_init())
    , m_nextLook(Clock::now() + longestSleep)
{
    for (const QByteArray &der : authorities) {
        const auto *bytes = reinterpret_cast<const unsigned char *>(der.constData());
        if (X509 *certificate = d2i_X509(nullptr, &bytes, long(der.size())))
            m_authorities.push_back(certificate);
    }
    curl_multi_setopt(m_multi, CURLMOPT_MAX_HOST_CONNECTIONS, connectionsToAServer);
}

CurlLoop::~CurlLoop()
{
    while (!m_transfers.empty())
        take(m_transfers.begin()->first);
    curl_multi_cleanup(m_multi);
    for (void *certificate : m_authorities)
        X509_free(static_cast<X509 *>(certificate));
}

void CurlLoop::add(std::shared_ptr<HTTPTransfer> transfer)
{
    auto own = std::make_unique<CurlTransfer>(std::move(transfer), &trustAdded, &m_authorities);
    CURL *handle = own->handle();
    m_nextLook = std::min(m_nextLook, own->deadline());
    m_handles.emplace(own->transfer().get(), handle);
    m_transfers.emplace(handle, std::move(own));
    curl_multi_add_handle(m_multi, handle);
}

void CurlLoop::cancel(const std::shared_ptr<HTTPTransfer> &transfer)
{
    const auto found = m_handles.find(transfer.get());
    if (found == m_handles.end())
        return;
    take(found->second);
    transfer->end({HTTPTransfer::cancelled, QStringLiteral("cancelled")});
}

void CurlLoop::turn()
{
    int running = 0;
    curl_multi_perform(m_multi, &running);
    collectEnded();
    endSilent();
    curl_multi_poll(m_multi, nullptr, 0, patience(), nullptr);
}

void CurlLoop::wake()
{
    curl_multi_wakeup(m_multi);
}

std::unique_ptr<CurlTransfer> CurlLoop::take(CURL *handle)
{
    curl_multi_remove_handle(m_multi, handle);
    const auto found = m_transfers.find(handle);
    std::unique_ptr<CurlTransfer> own = std::move(found->second);
    m_transfers.erase(found);
    m_handles.erase(own->transfer().get());
    return own;
}

void CurlLoop::collectEnded()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        // Not the message's any more once its handle is taken.
        const CURLcode result = message->data.result;
        if (message->msg == CURLMSG_DONE)
            take(message->easy_handle)->finish(result);
    }
}

// Whoever has been heard of meanwhile only moves the next look.
void CurlLoop::endSilent()
{
    const auto now = Clock::now();
    if (now < m_nextLook)
        return;
    m_nextLook = now + longestSleep;
    std::vector<CURL *> silent;
    for (const auto &[handle, own] : m_transfers) {
        if (own->deadline() <= now)
            silent.push_back(handle);
        else
            m_nextLook = std::min(m_nextLook, own->deadline());
    }
    for (CURL *handle : silent)
        take(handle)->transfer()->end(
            {CURLE_OPERATION_TIMEDOUT, QStringLiteral("no answer for too long")});
}

int CurlLoop::patience() const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_nextLook - Clock::now());
    return int(std::max(left, 0ms).count());
}
