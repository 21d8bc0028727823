#include "ui/Logging.h"

Q_LOGGING_CATEGORY(lcUi, "vant.ui")
