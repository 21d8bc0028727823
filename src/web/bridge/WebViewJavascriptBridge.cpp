#include "web/bridge/WebViewJavascriptBridge.h"

#include "web/Logging.h"

#include <QPointer>

namespace {

bool isAnswer(const QJsonArray &message)
{
    return message.at(0).isDouble();
}

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
    const QString &document, const QString &name, const QJsonValue &data, Respond response)
{
    if (!isShown(document))
        return;
    const int number = response ? ++m_calls : 0;
    if (response)
        m_responses.emplace(number, std::move(response));
    post({name, number}, data);
}

void WebViewJavascriptBridge::documentGone()
{
    begin({}, {});
}

void WebViewJavascriptBridge::begin(const QString &nonce, const QString &origin)
{
    m_responses.clear();
    takeOutgoing();
    m_nonce = nonce;
    m_origin = origin;
    m_isTrusted = !nonce.isEmpty() && m_trust(origin);
}

bool WebViewJavascriptBridge::isShown(const QString &document) const
{
    return !document.isEmpty() && document == m_nonce;
}

// Asked again as long as the answer is no: what the view says of its address may come later.
bool WebViewJavascriptBridge::servesDocument()
{
    m_isTrusted = m_isTrusted || m_trust(m_origin);
    return m_isTrusted;
}

QVariantList WebViewJavascriptBridge::receive(const QString &nonce, const QJsonArray &messages)
{
    if (!isShown(nonce))
        return {};
    if (!servesDocument()) {
        qCWarning(lcWeb) << "the bridge does not serve pages of" << m_origin;
        return {};
    }
    m_receiving = true;
    for (const QJsonValue &value : messages) {
        // One of them may have ended the document.
        if (!isShown(nonce))
            break;
        const QJsonArray message = value.toArray();
        if (isAnswer(message))
            takeAnswer(message);
        else
            takeCall(message);
    }
    m_receiving = false;
    // Nothing is left for a document that has ended.
    return takeOutgoing();
}

void WebViewJavascriptBridge::takeAnswer(const QJsonArray &answer)
{
    const auto found = m_responses.find(answer.at(0).toInt());
    if (found == m_responses.end())
        return;
    const Respond response = std::move(found->second);
    m_responses.erase(found);
    response(answer.at(1));
}

void WebViewJavascriptBridge::takeCall(const QJsonArray &call)
{
    const QString name = call.at(0).toString();
    const auto handler = m_handlers.constFind(name);
    if (handler == m_handlers.cend()) {
        qCWarning(lcWeb) << "a page called an unknown handler:" << name.left(64);
        return;
    }
    const int number = call.at(1).toInt();
    (*handler)(call.at(2),
        [self = QPointer(this), number, nonce = m_nonce](const QJsonValue &responseData) {
            if (self && number != 0 && self->isShown(nonce))
                self->post({number}, responseData);
        });
}

void WebViewJavascriptBridge::post(QVariantList message, const QJsonValue &data)
{
    if (!data.isUndefined())
        message << data.toVariant();
    m_outgoing << QVariant(message);
    if (m_receiving || std::exchange(m_flushScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_flushScheduled = false;
            if (!m_outgoing.isEmpty() && servesDocument())
                Q_EMIT toPage(m_nonce, takeOutgoing());
        },
        Qt::QueuedConnection);
}

QVariantList WebViewJavascriptBridge::takeOutgoing()
{
    return std::exchange(m_outgoing, {});
}
