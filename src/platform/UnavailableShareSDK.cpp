#include "platform/UnavailableShareSDK.h"

#include "platform/Logging.h"

bool UnavailableShareSDK::registerPlatforms(const QString &, const QString &)
{
    qCInfo(lcPlatform) << "sharing is not available";
    return false;
}
