#include "upload/Logging.h"

Q_LOGGING_CATEGORY(lcUpload, "vant.upload", QtInfoMsg)
