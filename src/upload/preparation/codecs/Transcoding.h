#pragma once

#include "upload/preparation/MediaCodecs.h"

//! One clip made into an MP4 file of H.264 and AAC; runs on the thread that calls.
class Transcoding
{
public:
    using Progress = MediaCodecs::Progress;

    //! Names what the bytes of an export depend on besides the clip's.
    static const char *settings();

    explicit Transcoding(const ClipExport &order);

    //! Writes the target. Null when it is done; otherwise what went wrong, and the target is no
    //! clip. A stop ends the run within a tenth of a second.
    QString run(const Progress &progress, std::stop_token stop);

private:
    ClipExport m_order;
};
