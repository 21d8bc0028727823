#pragma once

#include <QHash>
#include <QObject>

#include <memory>

class DesktopNotifications;
class PagePermissions;
class QQuickWebEngineProfile;
class QWebEngineNotification;

//! Shows what pages notify of as the desktop's notifications, under the name of the host, and tells
//! the page when the user touches or closes one. They go when the session ends. Owned by the
//! application.
class PageNotifications : public QObject
{
    Q_OBJECT

public:
    //! \a desktop: nobody else's.
    PageNotifications(DesktopNotifications *desktop, const PagePermissions *permissions);
    ~PageNotifications() override;

    //! Shows what the pages of this profile notify of.
    void listenTo(QQuickWebEngineProfile *profile);
    void withdrawAll();

Q_SIGNALS:
    //! The user has touched one: the window is wanted.
    void activated();

private:
    void present(QWebEngineNotification *notification);
    void replace(int number);
    void withdraw(int number);
    void drop(int number);

    DesktopNotifications *m_desktop;
    const PagePermissions *m_permissions;
    QHash<int, QWebEngineNotification *> m_shown;
    int m_lastNumber = 0;
};
