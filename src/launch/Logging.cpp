#include "launch/Logging.h"

Q_LOGGING_CATEGORY(lcLaunch, "vant.launch", QtInfoMsg)
