#include "platform/http/HTTPTask.h"

#include "platform/http/DataUrl.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/transport/ServerAddress.h"

#include <QLocale>
#include <QPointer>

namespace {

using Method = HTTPRequest::Method;

constexpr int firstSuccessStatus = 200;
constexpr int lastSuccessStatus = 299;
constexpr int mostRedirections = 10;
// Beside the transport's own numbers.
constexpr int unacceptableStatus = 1001;
constexpr int unacceptableContentType = 1002;
constexpr int unusableAddress = 1005;
constexpr int tooManyRedirections = 1006;

QByteArray mimeTypeOf(const HTTPResponse &response)
{
    const QByteArray type = response.header("Content-Type");
    return type.split(';').constFirst().trimmed().toLower();
}

bool isWeb(const QUrl &url)
{
    return (url.scheme() == u"http" || url.scheme() == u"https") && !url.host().isEmpty();
}

bool isSameOrigin(const QUrl &one, const QUrl &other)
{
    const auto portOf
        = [](const QUrl &url) { return url.port(url.scheme() == u"https" ? 443 : 80); };
    return one.scheme() == other.scheme() && one.host() == other.host()
        && portOf(one) == portOf(other);
}

bool hasHeader(const HTTPRequest &request, const QByteArray &name)
{
    return std::any_of(
        request.headers.cbegin(), request.headers.cend(), [&name](const auto &header) {
            return header.first.compare(name, Qt::CaseInsensitive) == 0;
        });
}

QByteArray cookieHeader(const QList<QNetworkCookie> &cookies)
{
    QByteArrayList pairs;
    for (const QNetworkCookie &cookie : cookies) {
        const QByteArray pair = cookie.toRawForm(QNetworkCookie::NameAndValueOnly);
        // One that is broken takes no other with it.
        if (fitsAHeader(pair))
            pairs << pair;
    }
    return pairs.join("; ");
}

}

HTTPTask::HTTPTask(HTTPNetwork *network, HTTPRequest request, const HTTPLimits &limits, Cache cache,
    HTTPSuccess success, HTTPFailure failure)
    : QObject(network)
    , m_network(network)
    , m_request(std::move(request))
    , m_address(m_request.url)
    , m_limits(limits)
    , m_cache(network->cache() ? cache : Cache::Ignored)
    , m_begin(std::chrono::steady_clock::now())
    , m_success(std::move(success))
    , m_failure(std::move(failure))
{
    begin();
}

HTTPTask::~HTTPTask()
{
    if (m_transfer)
        m_network->thread()->cancel(m_transfer);
}

void HTTPTask::begin()
{
    if (m_request.method == Method::Get) {
        if (const auto content = DataUrl::content(m_address); content && m_request.mayBeData)
            return answerLater(*content, {});
        if (m_cache == Cache::Used) {
            if (auto kept = m_network->cache()->find(m_address))
                return answerLater(*std::move(kept), {});
        }
    }
    if (!isWeb(m_request.url))
        return answerLater({}, {unusableAddress, QStringLiteral("no address of the web")});
    send();
}

void HTTPTask::send()
{
    HTTPRequest request = m_request;
    request.isDirect = ServerAddress::isLoopback(request.url);
    // As browsers say it; some servers answer nobody else.
    if (!hasHeader(request, "User-Agent"))
        request.headers.emplaceBack("User-Agent", "Mozilla/5.0");
    request.headers.emplaceBack("Accept-Language", QLocale::system().bcp47Name().toLatin1() + ",*");
    if (HTTPCookieStorage *storage = m_network->cookies()) {
        const QByteArray cookies = cookieHeader(storage->cookiesForUrl(request.url));
        if (!cookies.isEmpty())
            request.headers.emplaceBack("Cookie", cookies);
    }
    HTTPLimits limits = m_limits;
    if (limits.whole.count() > 0) {
        const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - m_begin);
        limits.whole = std::max(limits.whole - spent, std::chrono::milliseconds(1));
    }
    // The network outlives its thread, and the task need not.
    const auto tell = [network = m_network, self = QPointer(this)] {
        QMetaObject::invokeMethod(
            network,
            [self] {
                if (self)
                    self->didEnd();
            },
            Qt::QueuedConnection);
    };
    m_transfer = std::make_shared<HTTPTransfer>(std::move(request), limits, tell);
    m_network->thread()->start(m_transfer);
}

void HTTPTask::cancel()
{
    m_isCancelled = true;
    if (m_transfer)
        m_network->thread()->cancel(m_transfer);
}

void HTTPTask::didEnd()
{
    const std::shared_ptr<HTTPTransfer> transfer = std::move(m_transfer);
    HTTPResponse response = std::move(transfer->response);
    const bool isComplete = transfer->error.code == 0 && !m_isCancelled;
    if (isComplete) {
        storeCookies(response);
        if (auto next = redirection(response)) {
            if (++m_redirections > mostRedirections)
                return answer(
                    response, {tooManyRedirections, QStringLiteral("too many redirections")});
            m_request = *std::move(next);
            return send();
        }
    }
    const HTTPError error = errorOf(response, transfer->error);
    if (error.code == 0 && m_cache == Cache::Used)
        m_network->cache()->keep(m_address, response);
    answer(response, error);
}

void HTTPTask::storeCookies(const HTTPResponse &response)
{
    if (!m_network->cookies())
        return;
    QList<QNetworkCookie> cookies;
    for (const auto &[name, value] : response.headers) {
        if (name.compare("Set-Cookie", Qt::CaseInsensitive) == 0)
            cookies += QNetworkCookie::parseCookies(value);
    }
    if (!cookies.isEmpty())
        m_network->cookies()->setCookiesFromUrl(cookies, m_request.url);
}

// A form or a part goes to nobody but the server it was meant for.
std::optional<HTTPRequest> HTTPTask::redirection(const HTTPResponse &response) const
{
    const bool isSeeOther = response.statusCode >= 301 && response.statusCode <= 303;
    const bool isRepeat = response.statusCode == 307 || response.statusCode == 308;
    const QByteArray location = response.header("Location");
    if ((!isSeeOther && !isRepeat) || location.isEmpty())
        return {};
    HTTPRequest next = m_request;
    next.url = m_request.url.resolved(QUrl::fromEncoded(location));
    const bool opens = m_request.url.scheme() == u"https" && next.url.scheme() != u"https";
    if (!isWeb(next.url) || opens)
        return {};
    if (m_request.method != Method::Get) {
        if (!isSameOrigin(m_request.url, next.url)
            || (isSeeOther && m_request.method == Method::Put))
            return {};
        if (isSeeOther) {
            next.method = Method::Get;
            next.body.clear();
            next.headers.removeIf([](const auto &header) {
                return header.first.compare("Content-Type", Qt::CaseInsensitive) == 0;
            });
        }
    }
    if (!isSameOrigin(m_request.url, next.url))
        next.headers.removeIf([](const auto &header) {
            return header.first.compare("Authorization", Qt::CaseInsensitive) == 0;
        });
    return next;
}

HTTPError HTTPTask::errorOf(const HTTPResponse &response, const HTTPError &transport) const
{
    const bool refused = response.statusCode != 0
        && (response.statusCode < firstSuccessStatus || response.statusCode > lastSuccessStatus);
    if (refused)
        return {unacceptableStatus, QStringLiteral("status %1").arg(response.statusCode)};
    if (m_isCancelled)
        return {HTTPTransfer::cancelled, QStringLiteral("cancelled")};
    if (transport.code != 0)
        return transport;
    if (!m_limits.contentTypes.isEmpty() && !response.body.isEmpty()
        && !m_limits.contentTypes.contains(mimeTypeOf(response)))
        return {unacceptableContentType,
            QStringLiteral("content type %1")
                .arg(QString::fromLatin1(response.header("Content-Type")))};
    return {};
}

void HTTPTask::answerLater(HTTPResponse response, const HTTPError &error)
{
    QMetaObject::invokeMethod(
        m_network,
        [self = QPointer(this), response = std::move(response), error] {
            if (self)
                self->answer(response, error.code != 0 ? error : self->errorOf(response, {}));
        },
        Qt::QueuedConnection);
}

void HTTPTask::answer(const HTTPResponse &response, const HTTPError &error)
{
    const QPointer self(this);
    // Whoever is called may end the network, and goes on with what it holds.
    const HTTPSuccess success = std::move(m_success);
    const HTTPFailure failure = std::move(m_failure);
    if (error.code == 0)
        success(response);
    else
        failure(response, error);
    // Later would cost another turn of the loop.
    delete self;
}
