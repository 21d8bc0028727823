#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QObject>
#include <QVariantList>

#include <functional>
#include <unordered_map>

//! The shell's side of the bridge to the pages of one web view: named handlers on both sides, each
//! call with an optional answer. Owned by the controller of the web view and published to its page
//! as "shell".
//!
//! Payloads are any JSON value; an absent one is undefined. Answers and calls that become ready
//! together travel together. What is meant for a document that has gone is dropped.
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
    //! The document that the view shows: to a handler, the one that calls. Empty: none.
    QString document() const { return m_nonce; }
    //! Calls a handler in the page of that document; the answer, if it is wanted, comes once or
    //! never.
    void callHandler(const QString &document, const QString &name, const QJsonValue &data,
        Respond response = {});
    //! The document has gone without a successor yet.
    void documentGone();

    // For the page only. A document is known by its nonce; messages are as in bridge.js.
    //! A new document takes the view, and says of which origin it is.
    Q_INVOKABLE void begin(const QString &nonce, const QString &origin);
    //! Takes messages of the document and returns what is ready for it at once.
    Q_INVOKABLE QVariantList receive(const QString &nonce, const QJsonArray &messages);

Q_SIGNALS:
    //! Messages for the page. For the page only.
    void toPage(const QString &nonce, const QVariantList &messages);

private:
    bool isShown(const QString &document) const;
    bool servesDocument();
    void takeAnswer(const QJsonArray &answer);
    void takeCall(const QJsonArray &call);
    void post(QVariantList message, const QJsonValue &data);
    QVariantList takeOutgoing();

    Trust m_trust;
    QHash<QString, Handler> m_handlers;
    std::unordered_map<int, Respond> m_responses;
    int m_calls = 0;
    QString m_nonce; // of the document that the view shows; empty: none yet
    QString m_origin;
    bool m_isTrusted = false;
    QVariantList m_outgoing; // in the form that the channel would make of it
    bool m_receiving = false;
    bool m_flushScheduled = false;
};
