#include "launch/LaunchStage.h"

#include "launch/guide/UserGuideViewController.h"
#include "launch/notices/JurisdictionNoticeView.h"
#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"
#include "session/Account.h"

#include <unistd.h>

LaunchStage::LaunchStage(const Device &device, Account *account, Shell *shell, ShareSDK *shareSDK,
    const DeploymentConfiguration &configuration, const QSize &screenPixels)
    : m_consent(device.defaults, shareSDK, [] { ::_exit(EXIT_SUCCESS); })
    , m_splashAd(
          &account->requests, device.network, device.mainQueue, device.notifications, screenPixels)
    , m_updateCheck(
          device, account, shell, configuration, [this] { return m_splashAd.isShowing(); })
    , m_environment {.shell = shell,
          .defaults = device.defaults,
          .requests = &account->requests,
          .consent = &m_consent,
          .displayName = configuration.app.displayName,
          .contentHost = configuration.hosts.content,
          .openOutLinkPage = [this](const QString &url, const QString &title) {
              Q_EMIT openOutLinkPage(url, title);
          }}
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
