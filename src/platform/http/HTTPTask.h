#pragma once

#include "platform/transport/HTTPRequest.h"
#include "platform/transport/HTTPTypes.h"

#include <QObject>

#include <memory>

class HTTPNetwork;
struct HTTPTransfer;

//! One request on its way, redirections included; deletes itself after the answer has been
//! delivered. Exactly one of success and failure is called, on the main thread, never from inside
//! the call that started it; a cancelled task ends with failure. Only a network that ends first
//! takes its tasks with it unanswered.
class HTTPTask : public QObject
{
    Q_OBJECT

public:
    enum class Cache { Ignored, Used };

    HTTPTask(HTTPNetwork *network, HTTPRequest request, const HTTPLimits &limits, Cache cache,
        HTTPSuccess success, HTTPFailure failure);
    ~HTTPTask() override;

    void cancel();

private:
    void begin();
    void send();
    void didEnd();
    void storeCookies(const HTTPResponse &response);
    std::optional<HTTPRequest> redirection(const HTTPResponse &response) const;
    HTTPError errorOf(const HTTPResponse &response, const HTTPError &transport) const;
    void answerLater(HTTPResponse response, const HTTPError &error);
    void answer(const HTTPResponse &response, const HTTPError &error);

    HTTPNetwork *m_network;
    HTTPRequest m_request;
    const QUrl m_address; // before redirections
    const HTTPLimits m_limits;
    const Cache m_cache;
    const std::chrono::steady_clock::time_point m_begin;
    HTTPSuccess m_success;
    HTTPFailure m_failure;
    std::shared_ptr<HTTPTransfer> m_transfer;
    int m_redirections = 0;
    bool m_isCancelled = false;
};
