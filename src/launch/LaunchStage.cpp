#include "launch/LaunchStage.h"

#include "launch/guide/UserGuideViewController.h"
#include "launch/notices/JurisdictionNoticeView.h"

LaunchStage::LaunchStage(const Setup &setup)
    : m_environment {.shell = setup.shell,
        .defaults = setup.defaults,
        .requests = setup.requests,
        .consent = &m_consent,
        .displayName = setup.configuration.app.displayName,
        .contentHost = setup.configuration.hosts.content,
        .openOutLinkPage = setup.openOutLinkPage}
    , m_consent(setup.defaults, setup.shareSDK, setup.terminate)
    , m_splashAd(
          setup.requests, setup.network, setup.mainQueue, setup.notifications, setup.screenPixels)
    , m_updateCheck({.requests = setup.requests,
          .shell = setup.shell,
          .urlOpener = setup.urlOpener,
          .session = setup.session,
          .notifications = setup.notifications,
          .build = setup.configuration.app.build,
          .officialHost = setup.configuration.hosts.official,
          .launchAdShowing = [this] { return m_splashAd.isShowing(); }})
{
}

void LaunchStage::showJurisdictionNotice()
{
    JurisdictionNoticeView::showUntilAccepted(m_environment);
}

void LaunchStage::showUserGuide(const QSize &windowPixels)
{
    if (UserGuideViewController::shouldShowWelcomeViewController(*m_environment.defaults))
        (new UserGuideViewController(m_environment, windowPixels))->show();
}
