#include "launch/notices/JurisdictionNoticeView.h"

#include "launch/notices/PrivacyConsent.h"

using namespace Qt::StringLiterals;

JurisdictionNoticeView::JurisdictionNoticeView(const LaunchEnvironment &environment)
    : NoticeViewController(environment, u"JurisdictionNoticeScreen"_s)
{
    setTitle(u"感谢您使用%1"_s.arg(environment.displayName));
}

void JurisdictionNoticeView::showUntilAccepted(const LaunchEnvironment &environment)
{
    if (!environment.consent->isGiven())
        (new JurisdictionNoticeView(environment))->showInViewController();
}
