#pragma once

#include "session/UserCheck.h"
#include "session/UserSession.h"

#include <QJsonValue>
#include <QObject>

#include <functional>
#include <vector>

class PushBinding;

//! The login with the stored token, without a screen. One runs at a time: who asks while one is
//! under way gets its answer, so that a stale token can never make a loop of requests. It ends with
//! the session that it was asked for in.
class SilentLogin : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        SignedIn, //!< stored; cookies saved, push bound where the client id is known
        Refused, //!< the account's type may not use this edition
        Failed, //!< no usable answer; the text says why
        Cancelled, //!< the session has ended meanwhile: the answer is of no effect
    };
    using Finished = std::function<void(Outcome outcome, const QString &errorDescription)>;

    SilentLogin(LoginModel *loginModel, RequestInterface *requests, UserSession *session,
        PushBinding *binding);

    //! \a check: whether an account of a type that may not use this edition is refused.
    void start(LoginResult::Refresh refresh, UserCheck check, Finished finished);

private:
    struct Waiting
    {
        LoginResult::Refresh refresh;
        UserCheck check;
        Finished finished;
    };

    void handleAnswer(int status, const QJsonValue &data, const QString &errorDescription);
    void signIn(const QJsonObject &answer);
    void finish(Outcome outcome, const QString &errorDescription = {});

    LoginModel *m_loginModel;
    RequestInterface *m_requests;
    UserSession *m_session;
    PushBinding *m_binding;
    std::vector<Waiting> m_waiting;
    UserSession::Attempt m_attempt; // of the request under way
};
