#pragma once

#include <QObject>
#include <QString>

class AlertView;
class LinkHandOver;
class MainQueue;
class NetworkReachabilityManager;
class PagePermissions;
class Shell;
class ViewController;

//! What the views of pages have around them: the user to ask, other programs, and a place for
//! files. Shared by the views of all pages; owned by the application.
class PageHost : public QObject
{
    Q_OBJECT

public:
    PageHost(Shell *shell, MainQueue *mainQueue, LinkHandOver *links,
        NetworkReachabilityManager *reachability, const QString &downloadDirectory,
        PagePermissions *permissions);

    AlertView *alertView() const;
    MainQueue *mainQueue() const { return m_mainQueue; }
    LinkHandOver *links() const { return m_links; }
    NetworkReachabilityManager *reachability() const { return m_reachability; }
    QString downloadDirectory() const { return m_downloadDirectory; }
    PagePermissions *permissions() const { return m_permissions; }

    //! Takes the screen of a page away.
    void close(ViewController *page);
    // Tell the user how the download of a file went.
    void downloadKept(const QString &fileName);
    void downloadFailed(const QString &fileName);

private:
    Shell *m_shell;
    MainQueue *m_mainQueue;
    LinkHandOver *m_links;
    NetworkReachabilityManager *m_reachability;
    QString m_downloadDirectory;
    PagePermissions *m_permissions;
};
