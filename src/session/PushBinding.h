#pragma once

#include <QObject>

class LoginModel;
class MainQueue;
class RequestInterface;

//! Binds the push client id to the signed-in user; a failed call is repeated hourly, at most ten
//! times a process.
class PushBinding : public QObject
{
    Q_OBJECT

public:
    PushBinding(LoginModel *loginModel, RequestInterface *requests, MainQueue *mainQueue);

    //! Without a client id nothing is sent; an id that arrives later waits for the next login.
    void bindGeTui();

    //! Failed attempts that have been scheduled again since launch.
    qint64 regidFailedCount = 0;

private:
    void retryLater();

    LoginModel *m_loginModel;
    RequestInterface *m_requests;
    MainQueue *m_mainQueue;
};
