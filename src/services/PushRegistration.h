#pragma once

#include "model/DeploymentConfiguration.h"

#include <QList>
#include <QObject>
#include <QVariantMap>

class LoginModel;
class NotificationCenter;
class PushClient;
class UserSession;
class UserDefaults;

//! Registers this device with the push service and passes on what the service reports. Owned by the
//! application.
//!
//! The client id is stored when it comes and bound to a user at the next login only. Notifications
//! become "GeTuiPushLoadNewWeb" (in the foreground) and "backGeTuiPushLoadNewWeb" (tapped), with
//! their user info. Those of the foreground wait until somebody is signed in and observes them, in
//! a later run of the program too: what was sent while it was off comes before there is a home
//! container, and nobody may sign in this time. They were sent to the user of the last session:
//! when another signs in, those that wait are dropped.
class PushRegistration : public QObject
{
    Q_OBJECT

public:
    PushRegistration(PushClient *client, const DeploymentConfiguration::Push &credentials,
        LoginModel *loginModel, UserDefaults *defaults, NotificationCenter *notifications,
        UserSession *session);

    //! The registration at launch.
    void start();
    //! Starts the service again; the next client id posts "STOPNSTimer".
    void bindGeTuiAgain();
    void resetBadge();
    //! A tapped notification, from the service or from the desktop.
    void didReceiveNotification(const QVariantMap &userInfo);

    //! One of the foreground that waits for the user's next session.
    void keep(const QVariantMap &userInfo);

    //! The last notification was tapped from outside the program.
    bool isAppBackground = false;
    //! bindGeTuiAgain has been used.
    bool isBindGeTuiAgain = false;

private:
    void startSdk();
    void didRegisterClient(const QString &clientId);
    void didOccurError(const QString &error);
    void willPresentNotification(const QVariantMap &userInfo);
    void postWaiting();
    void storeWaiting();

    PushClient *m_client;
    DeploymentConfiguration::Push m_credentials;
    LoginModel *m_loginModel;
    UserDefaults *m_defaults;
    NotificationCenter *m_notifications;
    UserSession *m_session;
    QList<QVariantMap> m_waiting;
};
