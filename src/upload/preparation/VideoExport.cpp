#include "upload/preparation/VideoExport.h"

#include "upload/Logging.h"
#include "upload/preparation/ExportSize.h"
#include "upload/preparation/MediaCodecs.h"
#include "upload/preparation/Mp4Dates.h"

#include <QFileInfo>

VideoExport::VideoExport(const QString &cacheFolder)
    : m_cache(cacheFolder)
{
    m_thread.setMaxThreadCount(1);
}

VideoExport::~VideoExport()
{
    m_stop.request_stop();
    m_thread.waitForDone();
}

void VideoExport::exportClip(const QString &sourcePath, Progress progress, Done done)
{
    m_thread.start([this, sourcePath, progress = std::move(progress), done = std::move(done),
                       stop = m_stop.get_token()] {
        const auto report = [this, &progress](double share) {
            if (!progress)
                return;
            QMetaObject::invokeMethod(
                this, [progress, share] { progress(share); }, Qt::QueuedConnection);
        };
        const Result result = run(sourcePath, report, stop);
        if (!result.error.isNull())
            qCWarning(lcUpload) << "a clip was not exported:" << result.error;
        QMetaObject::invokeMethod(
            this, [done, result] { done(result); }, Qt::QueuedConnection);
    });
}

void VideoExport::cancel()
{
    m_stop.request_stop();
    m_stop = {};
}

void VideoExport::clear()
{
    cancel();
    m_cache.clear();
}

VideoExport::Result VideoExport::run(
    const QString &sourcePath, const Progress &progress, const std::stop_token &stop) const
{
    const auto failure = [](const QString &error) { return Result {{}, error}; };
    // A pipe would be waited for without end.
    if (!QFileInfo(sourcePath).isFile())
        return failure(QStringLiteral("no file"));
    const MediaCodecs &codecs = MediaCodecs::shared();
    const QString key = ExportCache::keyFor(sourcePath, codecs.exportSettings(), stop);
    if (key.isNull())
        return failure(QStringLiteral("the file cannot be read"));
    if (const QString known = m_cache.find(key); !known.isNull()) {
        progress(1);
        return {known, {}};
    }
    const ClipInfo clip = codecs.clipInfo(sourcePath, stop);
    if (!clip.error.isNull())
        return failure(clip.error);
    const QString writing = m_cache.pathForWriting(key);
    if (writing.isNull())
        return failure(QStringLiteral("no room for exports"));
    const QString error
        = codecs.exportClip({sourcePath, clip, exportSize(clip.size), writing}, progress, stop);
    // Whoever stops it may remove the exports, too.
    if (!error.isNull() || stop.stop_requested() || !removeMp4Dates(writing)) {
        m_cache.discard(key);
        return failure(error.isNull() ? QStringLiteral("the export is no clip") : error);
    }
    const QString exported = m_cache.add(key);
    if (exported.isNull())
        return failure(QStringLiteral("the export could not be kept"));
    progress(1);
    return {exported, {}};
}
