#include "session/Logging.h"

Q_LOGGING_CATEGORY(lcSession, "vant.session", QtInfoMsg)
