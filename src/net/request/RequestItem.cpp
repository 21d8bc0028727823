#include "net/request/RequestItem.h"

#include "model/SecretSettings.h"
#include "model/StringFormat.h"
#include "net/Logging.h"
#include "net/request/JsonFragment.h"
#include "net/request/LogMask.h"
#include "net/request/RequestItemOwner.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/storage/UserDefaults.h"

namespace {

constexpr std::chrono::seconds requestTimeout {30};
constexpr int parsedStatus = 200;

HTTPSessionManager sessionManager(HTTPNetwork *network)
{
    static const QSet<QByteArray> contentTypes {
        "application/json", "text/json", "text/plain", "text/html"};
    HTTPSessionManager manager(network);
    manager.setAcceptableContentTypes(contentTypes);
    manager.setTimeoutInterval(requestTimeout);
    manager.setValueForHTTPHeaderField("vant-ios;client-st;", "User-Agent");
    return manager;
}

}

std::unique_ptr<RequestItem> RequestItem::createItemWithtype(int type, const QString &organization,
    const QString &action, const QString &start, const HTTPParameters &params,
    RequestItemOwner *owner, ResponseCallback response)
{
    std::unique_ptr<RequestItem> item(new RequestItem);
    item->m_type = type;
    item->m_organization = organization;
    item->m_action = action;
    item->m_start = start;
    item->m_params = params;
    item->m_owner = owner;
    item->m_response = std::move(response);
    return item;
}

RequestItem::~RequestItem()
{
    if (m_requestTask)
        m_requestTask->cancel();
}

void RequestItem::request()
{
    const HTTPSessionManager manager = sessionManager(m_owner->network());
    HTTPParameters parameters = m_params;
    parameters[QStringLiteral("action")] = m_action;
    parameters[QStringLiteral("start")] = m_start;
    const QString address = m_owner->addressOf(m_action, m_start, m_organization);

    // The task outlives an item that is destroyed early.
    const auto whileAlive = [item = QPointer(this)](auto finish) {
        return [item, finish](const auto &...answer) {
            if (item)
                (item->*finish)(answer...);
        };
    };
    const auto failure = whileAlive(&RequestItem::didFail);
    if (m_type == Post) {
        m_requestTask
            = manager.POST(address, parameters, whileAlive(&RequestItem::didSucceedPost), failure);
    } else if (m_type == Get) {
        // The cookie string of the last answer is told here and no more: what travels is the cookie
        // storage.
        qCDebug(lcNet).noquote() << StringFormat::format(
            u"params:%@"_qs, QVariant(LogMask::parameters(parameters)));
        qCDebug(lcNet).noquote() << StringFormat::format(u"mipushCookie:%@"_qs,
            LogMask::secret(m_owner->defaults()->stringForKey(SecretSettings::receivedCookie)));
        m_requestTask
            = manager.GET(address, parameters, whileAlive(&RequestItem::didSucceedGet), failure);
    }
}

void RequestItem::cancel()
{
    qCDebug(lcNet).nospace() << "_requestTask=======" << m_requestTask.data();
    if (m_requestTask)
        m_requestTask->cancel();
}

void RequestItem::didSucceedGet(const HTTPResponse &response)
{
    const QString cookie = QString::fromUtf8(response.header("Set-Cookie"));
    qCDebug(lcNet).noquote() << StringFormat::format(u"cookieStr:%@"_qs, LogMask::secret(cookie));
    if (!cookie.isNull()) {
        m_owner->defaults()->setObject(cookie, SecretSettings::receivedCookie);
        m_owner->defaults()->synchronize();
    }
    if (response.statusCode == parsedStatus) {
        if (auto parsed = JsonFragment::parse(response.body))
            m_responseObject = *std::move(parsed);
    }
    m_owner->handelRequestDidFinish(this, std::nullopt);
}

void RequestItem::didSucceedPost(const HTTPResponse &response)
{
    m_responseObject = response.body;
    m_owner->handelRequestDidFinish(this, std::nullopt);
}

void RequestItem::didFail(const HTTPResponse &, const HTTPError &error)
{
    m_owner->handelRequestDidFinish(this, error);
}
