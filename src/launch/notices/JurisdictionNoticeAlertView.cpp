#include "launch/notices/JurisdictionNoticeAlertView.h"

using namespace Qt::StringLiterals;

JurisdictionNoticeAlertView::JurisdictionNoticeAlertView(const LaunchEnvironment &environment)
    : NoticeViewController(environment, u"JurisdictionNoticeAlertScreen"_s)
{
    setTitle(u"温馨提示"_s);
}
