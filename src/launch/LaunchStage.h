#pragma once

#include "launch/UpdateCheck.h"
#include "launch/ad/VANTSplashAdManager.h"
#include "launch/notices/LaunchEnvironment.h"
#include "launch/notices/PrivacyConsent.h"
#include "model/DeploymentConfiguration.h"

//! Everything that a launch puts before the person: advertisement, notices, guide, update. One for
//! the process, made by the application; what it is given must outlive it.
class LaunchStage
{
public:
    struct Setup
    {
        DeploymentConfiguration configuration;
        Shell *shell;
        UserDefaults *defaults;
        RequestInterface *requests;
        QNetworkAccessManager *network;
        MainQueue *mainQueue;
        NotificationCenter *notifications;
        UserSession *session;
        UrlOpener *urlOpener;
        ShareSDK *shareSDK;
        QSize screenPixels; //!< portrait
        std::function<void(const QString &url, const QString &title)> openOutLinkPage;
        //! Ends the process at once, without any of the usual work at its end.
        std::function<void()> terminate;
    };

    explicit LaunchStage(const Setup &setup);

    VANTSplashAdManager *splashAd() { return &m_splashAd; }
    PrivacyConsent *consent() { return &m_consent; }
    UpdateCheck *updateCheck() { return &m_updateCheck; }

    //! For a login screen that has been loaded: the notice, until it has been accepted once.
    void showJurisdictionNotice();
    //! The guide, at a first start. \a windowPixels chooses its drawings.
    void showUserGuide(const QSize &windowPixels);

private:
    LaunchEnvironment m_environment;
    PrivacyConsent m_consent;
    VANTSplashAdManager m_splashAd;
    UpdateCheck m_updateCheck;
};
