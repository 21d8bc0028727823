#pragma once

#include <QObject>

#include <chrono>

class LoginModel;
class MainQueue;
class RequestInterface;
class UserSession;

//! Binds the push client id to the signed-in user; a failed call is repeated hourly, at most ten
//! times a process. What has not been sent when the session ends is not sent any more.
class PushBinding : public QObject
{
    Q_OBJECT

public:
    PushBinding(LoginModel *loginModel, RequestInterface *requests, MainQueue *mainQueue,
        UserSession *session);

    //! Without a client id nothing is sent; an id that arrives later waits for the next login.
    void bindGeTui();
    //! The same after a while.
    void bindGeTuiAfter(std::chrono::milliseconds delay);

    //! Failed attempts that have been scheduled again since launch.
    qint64 regidFailedCount = 0;

private:
    void retryLater();

    LoginModel *m_loginModel;
    RequestInterface *m_requests;
    MainQueue *m_mainQueue;
    UserSession *m_session;
};
