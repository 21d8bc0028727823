#pragma once

#include <QImage>

#include <chrono>
#include <stop_token>

//! A frame of a clip to know it by.
struct VideoFrame
{
    QImage image; //!< upright, in its full size; null when there is none
    std::chrono::milliseconds duration {0}; //!< of the clip; 0: not known

    //! The first frame, or where that is of one colour, one from further on. Worker threads only.
    static VideoFrame first(const QString &filePath, std::stop_token stop);
};
