#include "web/WebViewJavascriptBridge.h"

#include "web/Logging.h"

#include <QPointer>

namespace {

constexpr QLatin1StringView nonceKey("nonce");
constexpr QLatin1StringView originKey("origin");
constexpr QLatin1StringView messagesKey("messages");
constexpr QLatin1StringView handlerNameKey("handlerName");
constexpr QLatin1StringView dataKey("data");
constexpr QLatin1StringView callbackIdKey("callbackId");
constexpr QLatin1StringView responseIdKey("responseId");
constexpr QLatin1StringView responseDataKey("responseData");

}

WebViewJavascriptBridge::WebViewJavascriptBridge(Trust trust)
    : m_trust(std::move(trust))
{
}

void WebViewJavascriptBridge::registerHandler(const QString &name, Handler handler)
{
    m_handlers.insert(name, std::move(handler));
}

void WebViewJavascriptBridge::callHandler(
    const QString &name, const QJsonValue &data, Respond response)
{
    QJsonObject message {{handlerNameKey, name}, {dataKey, data}};
    if (response) {
        m_responses.emplace(++m_calls, std::move(response));
        message.insert(callbackIdKey, m_calls);
    }
    post(message);
}

void WebViewJavascriptBridge::documentGone()
{
    m_nonce.clear();
    forgetDocument();
}

void WebViewJavascriptBridge::forgetDocument()
{
    // A call that waited for an answer of the document will never get one.
    m_responses.clear();
    // The next document numbers its calls from the same start.
    for (qsizetype i = m_outgoing.size() - 1; i >= 0; --i) {
        if (m_outgoing.at(i).toObject().contains(responseIdKey))
            m_outgoing.removeAt(i);
    }
}

QJsonObject WebViewJavascriptBridge::receive(const QJsonObject &batch)
{
    const QString origin = batch.value(originKey).toString();
    if (!m_trust(origin)) {
        qCWarning(lcWeb) << "the bridge does not serve pages of" << origin;
        return {};
    }
    const QString nonce = batch.value(nonceKey).toString();
    if (nonce != m_nonce) {
        if (!m_nonce.isEmpty())
            forgetDocument();
        m_nonce = nonce;
    }
    m_receiving = true;
    for (const QJsonValue &message : batch.value(messagesKey).toArray())
        handle(message.toObject());
    m_receiving = false;
    return takeOutgoing();
}

void WebViewJavascriptBridge::handle(const QJsonObject &message)
{
    if (message.contains(responseIdKey)) {
        const auto found = m_responses.find(message.value(responseIdKey).toInt());
        if (found == m_responses.end())
            return;
        const Respond response = std::move(found->second);
        m_responses.erase(found);
        response(message.value(responseDataKey));
        return;
    }
    const QString name = message.value(handlerNameKey).toString();
    const auto handler = m_handlers.constFind(name);
    if (handler == m_handlers.cend()) {
        qCWarning(lcWeb) << "a page called an unknown handler:" << name.left(64);
        return;
    }
    const QJsonValue callbackId = message.value(callbackIdKey);
    (*handler)(message.value(dataKey),
        [self = QPointer(this), callbackId, nonce = m_nonce](const QJsonValue &responseData) {
            if (!self || callbackId.isUndefined() || nonce != self->m_nonce)
                return;
            self->post({{responseIdKey, callbackId}, {responseDataKey, responseData}});
        });
}

void WebViewJavascriptBridge::post(const QJsonObject &message)
{
    m_outgoing.append(message);
    if (m_receiving || m_nonce.isEmpty() || std::exchange(m_flushScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_flushScheduled = false;
            if (!m_nonce.isEmpty() && !m_outgoing.isEmpty())
                Q_EMIT toPage(takeOutgoing());
        },
        Qt::QueuedConnection);
}

QJsonObject WebViewJavascriptBridge::takeOutgoing()
{
    return {{nonceKey, m_nonce}, {messagesKey, std::exchange(m_outgoing, {})}};
}
