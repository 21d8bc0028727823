#pragma once

#include "session/LoginResult.h"

#include <QJsonValue>
#include <QObject>

#include <functional>
#include <vector>

class PushBinding;
class SsoCookies;

//! The login with the stored token, without a screen. One runs at a time: who asks while one is
//! under way gets its answer, so that a stale token can never make a loop of requests.
class SilentLogin : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        SignedIn, //!< stored; cookies saved, push bound where the client id is known
        Refused, //!< the account's type may not use this edition
        Failed, //!< no usable answer; the text says why
    };
    enum class UserCheck { No, Yes };
    using Finished = std::function<void(Outcome outcome, const QString &errorDescription)>;

    SilentLogin(LoginModel *loginModel, RequestInterface *requests, SsoCookies *cookies,
        LoginResult *result, PushBinding *binding);

    //! \a check: whether an account of a type that may not use this edition is refused.
    void start(LoginResult::Refresh refresh, UserCheck check, Finished finished);
    //! Who signs out meanwhile stays signed out: whoever waits hears of a failure without a text,
    //! and the answer is of no effect.
    void cancel();

private:
    struct Waiting
    {
        LoginResult::Refresh refresh;
        UserCheck check;
        Finished finished;
    };

    void handleAnswer(int status, const QJsonValue &data, const QString &errorDescription);
    void signIn(const QJsonObject &answer);
    void fail(const QString &errorDescription);

    LoginModel *m_loginModel;
    RequestInterface *m_requests;
    SsoCookies *m_cookies;
    LoginResult *m_result;
    PushBinding *m_binding;
    std::vector<Waiting> m_waiting;
    int m_attempt = 0;
};
