#include "platform/Logging.h"

Q_LOGGING_CATEGORY(lcPlatform, "vant.platform", QtInfoMsg)
