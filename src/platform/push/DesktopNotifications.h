#pragma once

#include <QHash>
#include <QObject>
#include <QVariantMap>

class QDBusPendingCallWatcher;

//! Shows notifications through the desktop's notification service. Owned by the application.
class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    struct Content
    {
        QString title;
        QString body;
        bool sound = true;
    };

    //! \a desktopEntry: name of the program's desktop file without its ending.
    DesktopNotifications(const QString &applicationName, const QString &desktopEntry);

    //! Shows a notification that stands for the user info. Ends in unavailable() where no service
    //! takes it, never from inside this call.
    void post(const Content &content, const QVariantMap &userInfo);
    //! Takes away the notification that stands for the user info, which is told no more.
    void close(const QVariantMap &userInfo);

Q_SIGNALS:
    //! The user tapped the notification; comes once for each.
    void activated(const QVariantMap &userInfo);
    //! It is shown no more, and the user has not tapped it.
    void closed(const QVariantMap &userInfo);
    void unavailable(const QVariantMap &userInfo);

private Q_SLOTS:
    void onActionInvoked(uint id, const QString &action);
    void onNotificationClosed(uint id, uint reason);
    void onActivationToken(uint id, const QString &token);

private:
    void onAnswer(QDBusPendingCallWatcher *watcher, const QVariantMap &userInfo);

    QString m_applicationName;
    QString m_desktopEntry;
    QHash<uint, QVariantMap> m_shown;
    QList<QVariantMap> m_awaited; // posted, and the desktop has not said under which number
};
