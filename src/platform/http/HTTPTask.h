#pragma once

#include "platform/http/HTTPTypes.h"

#include <QBasicTimer>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <chrono>

class QNetworkReply;

//! What an answer may be and take.
struct HTTPLimits
{
    QSet<QByteArray> contentTypes; //!< of an answer with a body; empty: any
    qint64 bodySize; //!< unpacked, in bytes
    std::chrono::milliseconds silence; //!< how long nothing may arrive or leave
};

//! One request on its way. Made by HTTPSessionManager, deletes itself after the answer has been
//! delivered. Exactly one of success and failure is called, on the main thread, never from inside
//! the call that started it; a cancelled task ends with failure. Only a network access manager that
//! dies first takes its tasks with it unanswered.
class HTTPTask : public QObject
{
    Q_OBJECT

public:
    HTTPTask(
        QNetworkReply *reply, const HTTPLimits &limits, HTTPSuccess success, HTTPFailure failure);

    void cancel();

Q_SIGNALS:
    //! Bytes sent of the body, and its size.
    void uploadProgress(qint64 sent, qint64 total);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void awaitMore();
    void checkAnnouncedSize();
    void receive();
    void readBody();
    void refuseBody();
    void finish();
    HTTPError errorOf(const HTTPResponse &response) const;

    QNetworkReply *m_reply;
    QByteArray m_body;
    HTTPLimits m_limits;
    QBasicTimer m_silence;
    bool m_bodyIsTooLarge = false;
    HTTPSuccess m_success;
    HTTPFailure m_failure;
};
