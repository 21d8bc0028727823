#pragma once

#include "web/profiles/WebPageProfile.h"

#include <QObject>

#include <vector>

class MainQueue;
class QQuickWebEngineProfile;
class UserDefaults;

//! The engine's profiles, one for each class of pages, each made when it is first wanted. Owned by
//! the application, and outlives all views.
//!
//! What pages keep on the device lies in one folder for all profiles. The engine cannot empty a
//! profile; so another user's pages get new ones in a new folder. The former ones go with their
//! last user, and their folder with them; what a kill leaves behind goes at the next start.
class PageProfiles : public QObject
{
    Q_OBJECT

public:
    //! Whoever shows pages of a profile holds it as long as its view lives.
    using Shared = std::shared_ptr<WebPageProfile>;

    //! \a root: below which the folders of the profiles lie.
    PageProfiles(const QString &root, HTTPCookieStorage *storage, UserDefaults *defaults,
        MainQueue *mainQueue);
    ~PageProfiles() override;

    Shared home();
    Shared miniProgram();
    Shared landscape();
    Shared outLink();

    //! From now on new profiles are given out.
    void renew();

Q_SIGNALS:
    void made(QQuickWebEngineProfile *profile);

private:
    using Make
        = std::unique_ptr<WebPageProfile> (*)(const QString &folder, HTTPCookieStorage *storage);

    Shared existing(Shared &profile, Make make, const QString &name);
    int folderNumber() const;
    QString folder() const;
    void retire(WebPageProfile *profile);
    void dropUnused();
    void removeFormerFolders();

    QString m_root;
    HTTPCookieStorage *m_storage;
    UserDefaults *m_defaults;
    MainQueue *m_mainQueue;
    std::vector<std::unique_ptr<WebPageProfile>> m_unused;
    Shared m_home;
    Shared m_miniProgram;
    Shared m_landscape;
    Shared m_outLink;
};
