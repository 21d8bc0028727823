#pragma once

#include <QObject>
#include <QPointer>

class MainQueue;
class Navigator;
class PageHost;
class PageProfiles;
class ViewController;

//! Opens pages beside the home container, over what is shown: one at a time for the portal, and
//! one for the shell's own screens; while it is there, nothing comes of further wishes. What
//! it is given must outlive it.
class SecondaryPages : public QObject
{
    Q_OBJECT

public:
    SecondaryPages(
        Navigator *navigator, PageProfiles *profiles, PageHost *host, MainQueue *mainQueue);

    void jump2Outlink(const QString &url, const QString &title, const QString &color);
    void jump2OutlinkLandscape(const QString &url);
    void openOutLinkPage(const QString &url, const QString &title);

Q_SIGNALS:
    //! A page wants the window this way, and no longer.
    void landscapeScreenWanted(bool landscape);

private:
    bool isThere(const QPointer<ViewController> &page) const;

    Navigator *m_navigator;
    PageProfiles *m_profiles;
    PageHost *m_host;
    MainQueue *m_mainQueue;
    QPointer<ViewController> m_pageOfPortal;
    QPointer<ViewController> m_pageOfShell;
};
