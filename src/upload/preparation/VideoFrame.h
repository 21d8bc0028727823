#pragma once

#include <QImage>

#include <chrono>

//! A frame of a clip to know it by.
struct VideoFrame
{
    QImage image; //!< upright, in its full size; null when there is none
    std::chrono::milliseconds duration {0}; //!< of the clip; 0: not known
};
