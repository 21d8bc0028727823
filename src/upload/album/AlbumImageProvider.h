#pragma once

#include "platform/media/PhotoAsset.h"

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <QUrl>

#include <chrono>
#include <stop_token>

//! Pictures of the album's photos and clips for QML, read on threads of its own. The square that
//! sourceSize asks for is filled; with "/whole" after the address the picture fits into it
//! uncut. A file that has no picture is an error. Owned by the QML engine.
class AlbumImageProvider : public QQuickAsyncImageProvider
{
    Q_OBJECT

public:
    static constexpr auto name = "album";

    AlbumImageProvider();
    ~AlbumImageProvider() override;

    static QUrl address(const PhotoAsset &asset);

    QQuickImageResponse *requestImageResponse(
        const QString &id, const QSize &requestedSize) override;

    //! For the threads: from memory or from the file. Null for a file without a picture.
    QImage read(const QString &id, const QSize &requestedSize, std::stop_token stop);

Q_SIGNALS:
    //! A clip has been read and its length is known. Comes from any thread.
    void durationKnown(const QString &filePath, std::chrono::milliseconds duration);

private:
    QMutex m_guard;
    QCache<QString, QImage> m_images; // cost: KiB
    std::stop_source m_end;
    QThreadPool m_threads;
};
