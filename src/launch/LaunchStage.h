#pragma once

#include "launch/UpdateCheck.h"
#include "launch/ad/VANTSplashAdManager.h"
#include "launch/notices/LaunchEnvironment.h"
#include "launch/notices/PrivacyConsent.h"

//! Everything that a launch puts before the person: advertisement, notices, guide, update. One for
//! the process; what it is given must outlive it.
class LaunchStage : public QObject
{
    Q_OBJECT

public:
    //! \a screenPixels: of the screen, portrait; the advertisement's picture is chosen for it.
    LaunchStage(const Device &device, Account *account, Shell *shell, ShareSDK *shareSDK,
        const DeploymentConfiguration &configuration, const QSize &screenPixels);

    VANTSplashAdManager *splashAd() { return &m_splashAd; }
    PrivacyConsent *consent() { return &m_consent; }
    UpdateCheck *updateCheck() { return &m_updateCheck; }

    //! For a login screen that has been loaded: the notice, until it has been accepted once.
    void showJurisdictionNotice();
    //! The guide, at a first start. \a windowPixels chooses its drawings.
    void showUserGuide(const QSize &windowPixels);

Q_SIGNALS:
    //! The person wants to read a page, under a bar with this title and over what is shown.
    void openOutLinkPage(const QString &url, const QString &title);

private:
    PrivacyConsent m_consent;
    VANTSplashAdManager m_splashAd;
    UpdateCheck m_updateCheck;
    LaunchEnvironment m_environment;
};
