#include "model/Logging.h"

Q_LOGGING_CATEGORY(lcModel, "vant.model", QtInfoMsg)
