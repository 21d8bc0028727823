#pragma once

#include "upload/preparation/VideoFrame.h"

#include <QString>

#include <stop_token>

namespace FirstFrame {

//! The first frame of a clip, or where that is of one colour, one from further on. Worker threads
//! only.
VideoFrame of(const QString &filePath, std::stop_token stop);

}
