#pragma once

#include "web/secondary/OMOutLinkLandscapeViewController.h"

#include <QPointer>

class Navigator;
class PageProfiles;

//! Opens pages beside the home container, over what is shown: one at a time for the portal, and
//! one for the shell's own screens; while it is there, nothing comes of further wishes. Owned by
//! the application; what it is given must outlive it.
class SecondaryPages
{
public:
    SecondaryPages(Navigator *navigator, PageProfiles *profiles, PageHost *host,
        MainQueue *mainQueue,
        OMOutLinkLandscapeViewController::SetLandscapeScreen setLandscapeScreen);

    void jump2Outlink(const QString &url, const QString &title, const QString &color);
    void jump2OutlinkLandscape(const QString &url);
    void openOutLinkPage(const QString &url, const QString &title);

private:
    bool isThere(const QPointer<ViewController> &page) const;

    Navigator *m_navigator;
    PageProfiles *m_profiles;
    PageHost *m_host;
    MainQueue *m_mainQueue;
    OMOutLinkLandscapeViewController::SetLandscapeScreen m_setLandscapeScreen;
    QPointer<ViewController> m_pageOfPortal;
    QPointer<ViewController> m_pageOfShell;
};
