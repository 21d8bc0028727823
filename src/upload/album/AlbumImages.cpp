#include "upload/album/AlbumImages.h"

#include "upload/album/AlbumImageProvider.h"

#include <QQmlEngine>

AlbumImages *AlbumImages::create(QQmlEngine *engine, QJSEngine *)
{
    auto *images = new AlbumImages;
    auto *provider = new AlbumImageProvider;
    connect(provider, &AlbumImageProvider::durationKnown, images,
        [images](const QString &filePath, std::chrono::milliseconds duration) {
            Q_EMIT images->durationKnown(filePath, double(duration.count()));
        });
    engine->addImageProvider(QString::fromLatin1(AlbumImageProvider::name), provider);
    return images;
}
