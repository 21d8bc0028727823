#pragma once

#include "web/OMOutLinkLandscapeViewController.h"

#include <QPointer>

class HTTPCookieStorage;
class Navigator;

//! Opens pages beside the home container, over what is shown: one at a time for the portal, and
//! one for the shell's own screens; while it is there, nothing comes of further wishes. Owned by
//! the application; what it is given must outlive it. The profile of a class of pages is made for
//! the first of them.
class SecondaryPages
{
public:
    //! \a folder: where the pages' own storage goes.
    SecondaryPages(Navigator *navigator, HTTPCookieStorage *storage, const QString &folder,
        PageHost *host, MainQueue *mainQueue,
        OMOutLinkLandscapeViewController::SetLandscapeScreen setLandscapeScreen);
    ~SecondaryPages();

    void jump2Outlink(const QString &url, const QString &title, const QString &color);
    void jump2OutlinkLandscape(const QString &url);
    void openOutLinkPage(const QString &url, const QString &title);

private:
    using Profile = std::unique_ptr<WebPageProfile>;
    using MakeProfile = Profile (*)(const QString &folder, HTTPCookieStorage *storage);

    bool isThere(const QPointer<ViewController> &page) const;
    WebPageProfile *made(Profile &profile, MakeProfile make, const QString &name);

    Navigator *m_navigator;
    HTTPCookieStorage *m_storage;
    QString m_folder;
    PageHost *m_host;
    MainQueue *m_mainQueue;
    OMOutLinkLandscapeViewController::SetLandscapeScreen m_setLandscapeScreen;
    QPointer<ViewController> m_pageOfPortal;
    QPointer<ViewController> m_pageOfShell;
    Profile m_miniProgram;
    Profile m_landscape;
    Profile m_outLink;
};
