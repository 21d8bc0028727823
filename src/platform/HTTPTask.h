#pragma once

#include "platform/HTTPTypes.h"

#include <QObject>
#include <QPointer>
#include <QSet>

class QNetworkReply;

//! One request on its way. Made by HTTPSessionManager, deletes itself after the answer has been
//! delivered. Exactly one of success and failure is called, on the main thread, never from inside
//! the call that started it; a cancelled task ends with failure. Only a network access manager that
//! dies first takes its tasks with it unanswered.
class HTTPTask : public QObject
{
    Q_OBJECT

public:
    HTTPTask(QNetworkReply *reply, const QSet<QByteArray> &acceptableContentTypes,
        qint64 maximumBodySize, HTTPSuccess success, HTTPFailure failure);

    void cancel();

Q_SIGNALS:
    //! Bytes sent of the body, and its size.
    void uploadProgress(qint64 sent, qint64 total);

private:
    void checkAnnouncedSize();
    void readBody();
    void refuseBody();
    void finish();
    HTTPError errorOf(const HTTPResponse &response) const;

    QNetworkReply *m_reply;
    QByteArray m_body;
    QSet<QByteArray> m_acceptableContentTypes;
    qint64 m_maximumBodySize;
    bool m_bodyIsTooLarge = false;
    HTTPSuccess m_success;
    HTTPFailure m_failure;
};
