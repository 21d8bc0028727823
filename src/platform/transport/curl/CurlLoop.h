#pragma once

#include "platform/transport/TransferLoop.h"
#include "platform/transport/curl/CurlTransfer.h"

#include <map>
#include <vector>

//! Transfers by libcurl, over connections that are kept for the next.
class CurlLoop : public TransferLoop
{
public:
    explicit CurlLoop(const QByteArrayList &authorities);
    ~CurlLoop() override;

    void add(std::shared_ptr<HTTPTransfer> transfer) override;
    void cancel(const std::shared_ptr<HTTPTransfer> &transfer) override;
    void turn() override;
    void wake() override;

private:
    using Clock = CurlTransfer::Clock;

    std::unique_ptr<CurlTransfer> take(CURL *handle);
    void collectEnded();
    void endSilent();
    int patience() const;

    std::vector<void *> m_authorities; // certificates beside the system's
    CURLM *const m_multi;
    std::map<CURL *, std::unique_ptr<CurlTransfer>> m_transfers;
    std::map<const HTTPTransfer *, CURL *> m_handles;
    Clock::time_point m_nextLook; // for transfers that have fallen silent
};
