#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QObject>

#include <functional>
#include <unordered_map>

//! The shell's side of the bridge to the pages of one web view: named handlers on both sides, each
//! call with an optional answer. Owned by the controller of the web view and published to its page
//! as "shell".
//!
//! Payloads are any JSON value; an absent one is undefined. Answers and calls that become ready
//! together travel together. A call into the page waits until a document is there to take it; an
//! answer to a document that has gone is dropped.
class WebViewJavascriptBridge : public QObject
{
    Q_OBJECT

public:
    using Respond = std::function<void(const QJsonValue &responseData)>;
    using Handler = std::function<void(const QJsonValue &data, const Respond &respond)>;
    //! Whether a page that gives this origin (scheme, host, port) may use the bridge now.
    using Trust = std::function<bool(const QString &origin)>;

    explicit WebViewJavascriptBridge(Trust trust);

    //! A later handler of the same name replaces the earlier one.
    void registerHandler(const QString &name, Handler handler);
    //! Calls a handler in the page; the answer, if it is wanted, comes once or never.
    void callHandler(const QString &name, const QJsonValue &data, Respond response = {});
    //! The document has gone without a successor yet: calls wait from now on.
    void documentGone();

    // For the page only. A document is known by its nonce; messages are as in bridge.js.
    //! A new document takes the view, and says of which origin it is; returns what waits for it.
    Q_INVOKABLE QJsonArray begin(const QString &nonce, const QString &origin);
    //! Takes messages of the document and returns what is ready for it at once.
    Q_INVOKABLE QJsonArray receive(const QString &nonce, const QJsonArray &messages);

Q_SIGNALS:
    //! Messages for the page. For the page only.
    void toPage(const QString &nonce, const QJsonArray &messages);

private:
    void forgetDocument();
    void takeAnswer(const QJsonArray &answer);
    void takeCall(const QJsonArray &call);
    void post(QJsonArray message, const QJsonValue &data);
    QJsonArray takeOutgoing();

    Trust m_trust;
    QHash<QString, Handler> m_handlers;
    std::unordered_map<int, Respond> m_responses;
    int m_calls = 0;
    QString m_nonce; // of the document that the view shows; empty: none yet
    QString m_origin;
    QJsonArray m_outgoing;
    bool m_receiving = false;
    bool m_flushScheduled = false;
};
