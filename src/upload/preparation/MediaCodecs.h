#pragma once

#include "upload/preparation/ClipInfo.h"
#include "upload/preparation/HeifPhoto.h"
#include "upload/preparation/VideoFrame.h"

#include <QtPlugin>

#include <functional>
#include <stop_token>

//! A clip to be made into an MP4 file of H.264 and AAC.
struct ClipExport
{
    QString sourcePath;
    ClipInfo source;
    QSize size; //!< of the export, upright
    QString targetPath;
};

//! What takes the big media libraries. They lie in a plugin that is loaded when it is first asked
//! for: on most days nobody sends a picture, and they take time and memory.
//!
//! This class stands in where the plugin is missing: it refuses everything. Clips on worker threads
//! only.
class MediaCodecs
{
public:
    //! 0 to 1; called on the thread that runs.
    using Progress = std::function<void(double)>;

    static const MediaCodecs &shared();

    MediaCodecs() = default;
    virtual ~MediaCodecs() = default;
    Q_DISABLE_COPY_MOVE(MediaCodecs)

    //! Loads what else takes long, about a second the first time; all else does so by itself.
    virtual void start() const { }

    //! The main picture of a file, in its full size.
    virtual HeifPhoto decodeHeif(const QByteArray &) const { return {{}, missing()}; }
    //! The smallest picture in the file whose shorter side has that many pixels.
    virtual HeifPhoto decodeSmallHeif(const QByteArray &, int) const { return {{}, missing()}; }

    virtual ClipInfo clipInfo(const QString &, std::stop_token) const
    {
        return {{}, false, std::chrono::milliseconds(0), missing()};
    }
    //! A frame to know the clip by.
    virtual VideoFrame firstFrame(const QString &, std::stop_token) const { return {}; }
    //! Names what the bytes of an export depend on besides the clip's.
    virtual QByteArray exportSettings() const { return {}; }
    //! Writes the target. Null when it is done; otherwise what went wrong, and the target is no
    //! clip. A stop ends the run within a tenth of a second.
    virtual QString exportClip(const ClipExport &, const Progress &, std::stop_token) const
    {
        return missing();
    }

private:
    static QString missing() { return QStringLiteral("the media codecs are missing"); }
};

Q_DECLARE_INTERFACE(MediaCodecs, "cn.vant.student.MediaCodecs")
