#include "web/Logging.h"

Q_LOGGING_CATEGORY(lcWeb, "vant.web", QtInfoMsg)
Q_LOGGING_CATEGORY(lcWebPage, "vant.web.page", QtInfoMsg)
