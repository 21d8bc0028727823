#pragma once

#include <QString>

#include <chrono>

//! What an advertisement shows and for how long. Moving pictures go on and on; the picture fills
//! the window and keeps its shape.
struct LaunchAdConfiguration
{
    QString imageNameOrURLString; //!< empty: there is nothing to show
    QString openModel; //!< handed to the delegate on a tap
    std::chrono::seconds duration {3};
    std::chrono::milliseconds showFinishAnimateTime {800}; //!< of the fade at the end
};
