#include "services/Logging.h"

Q_LOGGING_CATEGORY(lcServices, "vant.services", QtInfoMsg)
