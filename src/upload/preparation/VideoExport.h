#pragma once

#include "upload/preparation/ExportCache.h"

#include <QObject>
#include <QThreadPool>

#include <functional>

//! Exports clips to MP4 with H.264 and AAC that fit 960×540, or 540×960 upright. One for the upload
//! from pages; exports run one after the other on a thread of its own. The same clip gives the same
//! bytes each time.
//!
//! When it is destroyed, what runs is stopped, which takes some tenths of a second, and nobody is
//! answered.
class VideoExport : public QObject
{
    Q_OBJECT

public:
    struct Result
    {
        //! Null: no export. The file is the cache's: it stays where it is, to be copied.
        QString filePath;
        QString error;
    };
    //! Share of the clip that is done, rising, 0 to 1; main thread.
    using Progress = std::function<void(double)>;
    //! Main thread.
    using Done = std::function<void(const Result &)>;

    //! \a cacheFolder: keeps the last exports; of this process alone, made when it is needed.
    explicit VideoExport(const QString &cacheFolder);
    ~VideoExport() override;

    //! A path that is no readable local file, or no clip, is answered by an error.
    void exportClip(const QString &sourcePath, Progress progress, Done done);
    //! Stops what runs and what waits; each is answered by an error.
    void cancel();
    //! The same, and removes what was exported before.
    void clear();

private:
    Result run(
        const QString &sourcePath, const Progress &progress, const std::stop_token &stop) const;

    ExportCache m_cache;
    std::stop_source m_stop;
    QThreadPool m_thread;
};
