#include "upload/album/AlbumImageResponse.h"

#include "upload/album/AlbumImageJob.h"

QRunnable *AlbumImageResponse::reading(Read read)
{
    auto *job = new AlbumImageJob([read = std::move(read), stop = m_stop] { return read(stop); });
    connect(job, &AlbumImageJob::done, this, &AlbumImageResponse::finish);
    return job;
}

QQuickTextureFactory *AlbumImageResponse::textureFactory() const
{
    return QQuickTextureFactory::textureFactoryForImage(m_image);
}

QString AlbumImageResponse::errorString() const
{
    return m_image.isNull() ? QStringLiteral("no picture") : QString();
}

void AlbumImageResponse::cancel()
{
    m_stop.request_stop();
}

void AlbumImageResponse::finish(const QImage &image)
{
    m_image = image;
    Q_EMIT finished();
}
