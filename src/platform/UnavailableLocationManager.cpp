#include "platform/UnavailableLocationManager.h"

#include "platform/Logging.h"

bool UnavailableLocationManager::setApiKey(const QString &)
{
    qCInfo(lcPlatform) << "positions are not available";
    return false;
}
