#include "net/Logging.h"

Q_LOGGING_CATEGORY(lcNet, "vant.net", QtInfoMsg)
