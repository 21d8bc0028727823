#pragma once

#include "upload/preparation/ClipInfo.h"

#include <functional>

//! One clip made into an MP4 file of H.264 and AAC; runs on the thread that calls.
class Transcoding
{
public:
    //! 0 to 1; called on the thread that runs.
    using Progress = std::function<void(double)>;

    //! Names what the bytes of an export depend on besides the clip's.
    static const char *settings();

    Transcoding(const QString &sourcePath, const ClipInfo &source, const QString &targetPath);

    //! Writes the target. Null when it is done; otherwise what went wrong, and the target is no
    //! clip. A stop ends the run within a tenth of a second.
    QString run(const Progress &progress, std::stop_token stop);

private:
    QString m_sourcePath;
    ClipInfo m_source;
    QString m_targetPath;
};
