#include "platform/media/FolderPhotoLibrary.h"

#include "platform/media/BoundedImage.h"
#include "platform/media/MediaFolders.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QImageReader>
#include <QMutex>
#include <QPointer>
#include <QSaveFile>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

QString freeName(const QDir &folder, const QString &suffix)
{
    const QString stem = QDateTime::currentDateTime().toString(u"'IMG_'yyyyMMdd_HHmmss_zzz");
    QString name = stem + u'.' + suffix;
    for (int n = 1; folder.exists(name); ++n)
        name = QStringLiteral("%1_%2.%3").arg(stem).arg(n).arg(suffix);
    return folder.filePath(name);
}

// Null: written.
QString write(const QString &folderPath, QByteArray encoded)
{
    QBuffer buffer(&encoded);
    QImageReader reader(&buffer);
    const QString format = QString::fromLatin1(reader.format());
    if (BoundedImage::read(reader).isNull())
        return QStringLiteral("not an image: %1").arg(reader.errorString());

    // A free name stays free only until the next picture has taken it.
    static QMutex naming;
    const QMutexLocker locker(&naming);
    const QDir folder(folderPath);
    folder.mkpath(u"."_s);
    QSaveFile file(freeName(folder, format == u"jpeg" ? u"jpg"_s : format));
    if (!file.open(QIODevice::WriteOnly) || file.write(encoded) != encoded.size() || !file.commit())
        return file.errorString();
    return {};
}

}

FolderPhotoLibrary::FolderPhotoLibrary(const QString &album, const QStringList &others)
    : m_folder(album)
    , m_others(others)
{
}

FolderPhotoLibrary::~FolderPhotoLibrary()
{
    m_stop.request_stop();
}

void FolderPhotoLibrary::writeImageToSavedPhotosAlbum(const QByteArray &encoded, Saved saved)
{
    QThreadPool::globalInstance()->start(
        [self = QPointer(this), folder = m_folder, encoded, saved = std::move(saved)] {
            const QString error = write(folder, encoded);
            QMetaObject::invokeMethod(
                qApp,
                [self, error, saved] {
                    if (self)
                        saved(error);
                },
                Qt::QueuedConnection);
        });
}

void FolderPhotoLibrary::fetchAssets(PhotoAsset::MediaType mediaType, Fetched fetched)
{
    QThreadPool::globalInstance()->start(
        [self = QPointer(this), mediaType, folders = QStringList(m_folder) + m_others,
            fetched = std::move(fetched), stop = m_stop.get_token()] {
            const QList<PhotoAsset> assets = MediaFolders::assetsIn(folders, mediaType, stop);
            QMetaObject::invokeMethod(
                qApp,
                [self, assets, fetched] {
                    if (self)
                        fetched(assets);
                },
                Qt::QueuedConnection);
        });
}
