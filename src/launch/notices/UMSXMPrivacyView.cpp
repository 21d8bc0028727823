#include "launch/notices/UMSXMPrivacyView.h"

using namespace Qt::StringLiterals;

UMSXMPrivacyView::UMSXMPrivacyView(const LaunchEnvironment &environment)
    : NoticeViewController(environment, u"UMSXMPrivacyScreen"_s)
{
    setTitle(u"个人敏感信息收集使用说明（核心功能）"_s);
}
