#pragma once

#include "support/TracedRequest.h"

#include <QJsonObject>
#include <QList>
#include <QNetworkAccessManager>
#include <QUrl>

#include <functional>

//! The wire as the school platform saw it. Its own calls are not traced.
class Wire
{
public:
    using Matches = std::function<bool(const TracedRequest &)>;

    explicit Wire(const QUrl &platform);

    //! Forgets what has come so far.
    void mark();
    //! What has come since the last mark, in the order of the answers.
    QList<TracedRequest> requests();
    QList<TracedRequest> requests(const Matches &matches);

    //! Spoils answers to come, see the platform's own description of faults.
    void spoil(const QJsonObject &fault);
    //! Sends a notification to the device that was last seen to sign in.
    void push(const QString &page);
    //! What a client is told at its next start: "none", "still" or "animated"; "none", "optional"
    //! or "forced".
    void setNotices(const QString &ad, const QString &update);
    QByteArray get(const QString &path);
    //! The whole address of a page of the platform.
    QUrl address(const QString &page) const { return m_platform.resolved(QUrl(page)); }

private:
    QJsonObject trace(int since);
    void post(const QString &path, const QJsonObject &body);
    QByteArray finished(QNetworkReply *reply);

    QUrl m_platform;
    QNetworkAccessManager m_network;
    int m_mark = 0;
};

//! Matches a call of the platform by its operation.
Wire::Matches isCall(const QString &start);
//! Matches by path.
Wire::Matches isPath(const QString &path);
//! The cookies of a request as "name=value" pairs.
QStringList cookiesOf(const TracedRequest &request);
bool hasCookie(const TracedRequest &request, const QString &name);
