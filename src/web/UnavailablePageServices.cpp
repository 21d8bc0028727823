#include "web/UnavailablePageServices.h"

#include "model/StringFormat.h"
#include "ui/Toast.h"

using namespace Qt::StringLiterals;

UnavailablePageServices::UnavailablePageServices(Toast *toast)
    : m_toast(toast)
{
}

void UnavailablePageServices::scanQrCode()
{
    tell(u"扫一扫"_s);
}

void UnavailablePageServices::getLocation()
{
    tell(u"定位"_s);
}

void UnavailablePageServices::action(const QUrl &)
{
    tell(u"分享"_s);
}

void UnavailablePageServices::linkShareAction(
    const QString &, const QString &, const QString &, const QString &)
{
    tell(u"分享"_s);
}

void UnavailablePageServices::jump2Outlink(const QString &, const QString &, const QString &)
{
    tell(u"外部页面"_s);
}

void UnavailablePageServices::jump2OutlinkLandscape(const QString &)
{
    tell(u"横屏页面"_s);
}

void UnavailablePageServices::tell(const QString &service)
{
    m_toast->showError(StringFormat::format(u"%@功能暂不可用"_s, service));
}
