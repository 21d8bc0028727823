#include "web/WebViewJavascriptBridge.h"

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
    const QString &name, const QJsonValue &data, Respond response)
{
    const int number = response ? ++m_calls : 0;
    if (response)
        m_responses.emplace(number, std::move(response));
    post({name, number}, data);
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
        if (isAnswer(m_outgoing.at(i).toArray()))
            m_outgoing.removeAt(i);
    }
}

QJsonArray WebViewJavascriptBridge::begin(const QString &nonce, const QString &origin)
{
    if (!m_nonce.isEmpty())
        forgetDocument();
    m_nonce = nonce;
    m_origin = origin;
    return m_trust(m_origin) ? takeOutgoing() : QJsonArray();
}

QJsonArray WebViewJavascriptBridge::receive(const QString &nonce, const QJsonArray &messages)
{
    if (nonce != m_nonce)
        return {};
    if (!m_trust(m_origin)) {
        qCWarning(lcWeb) << "the bridge does not serve pages of" << m_origin;
        return {};
    }
    m_receiving = true;
    for (const QJsonValue &value : messages) {
        const QJsonArray message = value.toArray();
        if (isAnswer(message))
            takeAnswer(message);
        else
            takeCall(message);
    }
    m_receiving = false;
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
            if (self && number != 0 && nonce == self->m_nonce)
                self->post({number}, responseData);
        });
}

void WebViewJavascriptBridge::post(QJsonArray message, const QJsonValue &data)
{
    if (!data.isUndefined())
        message.append(data);
    m_outgoing.append(message);
    if (m_receiving || m_nonce.isEmpty() || std::exchange(m_flushScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_flushScheduled = false;
            if (!m_nonce.isEmpty() && !m_outgoing.isEmpty() && m_trust(m_origin))
                Q_EMIT toPage(m_nonce, takeOutgoing());
        },
        Qt::QueuedConnection);
}

QJsonArray WebViewJavascriptBridge::takeOutgoing()
{
    return std::exchange(m_outgoing, {});
}
