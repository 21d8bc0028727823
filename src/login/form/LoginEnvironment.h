#pragma once

#include <QString>

#include <functional>

class LoginModel;
class MainQueue;
class NetworkReachabilityManager;
class NotificationCenter;
class PushBinding;
class QNetworkAccessManager;
class RequestInterface;
class Shell;
class UserDefaults;
class UserSession;
class WXApi;

//! Everything that the login screens work with; nothing is owned, all must outlive them.
struct LoginEnvironment
{
    UserDefaults *defaults;
    LoginModel *loginModel;
    MainQueue *mainQueue;
    QNetworkAccessManager *network;
    NotificationCenter *notifications;
    PushBinding *pushBinding;
    NetworkReachabilityManager *reachability;
    RequestInterface *requests;
    Shell *shell;
    UserSession *session;
    WXApi *wxApi;
    QString displayName; //!< the platform's name, the screen's title
    bool isPatriarch = false; //!< parent mode
    //! Whether a launch advertisement covers the screen; none: there is never one.
    std::function<bool()> launchAdShowing;
    //! Lays the notice about personal data over the screen until it has been accepted once; none:
    //! nobody asks.
    std::function<void()> showJurisdictionNotice = {};
};
