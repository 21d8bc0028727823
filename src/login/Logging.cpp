#include "login/Logging.h"

Q_LOGGING_CATEGORY(lcLogin, "vant.login", QtInfoMsg)
