#include "platform/UnavailableWXApi.h"

#include "platform/Logging.h"

bool UnavailableWXApi::registerApp(const QString &, const QString &)
{
    qCInfo(lcPlatform) << "WeChat authorisation is not available";
    return false;
}

bool UnavailableWXApi::sendAuthReq(const QString &, const QString &)
{
    return false;
}
