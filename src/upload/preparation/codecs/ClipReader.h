#pragma once

#include "upload/preparation/ClipInfo.h"

#include <stop_token>

namespace ClipReader {

//! Reads a clip without decoding more than its first frame. Worker threads only. A stop ends the
//! reading within a tenth of a second.
ClipInfo read(const QString &filePath, std::stop_token stop);

}
