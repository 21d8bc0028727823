#pragma once

#include "platform/PhotoLibrary.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

//! The pictures that were put into a folder, whether they are still there or not.
class SmallAlbum : public PhotoLibrary
{
public:
    //! Older than those that were added before. No data: a picture of its own colour.
    QString add(const QString &name, const QByteArray &data = {})
    {
        const QString path = folder.filePath(name);
        QImage image(64, 48, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(int(assets.size() * 40) % 360, 160, 220));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)
            || (data.isNull() ? !image.save(&file, "png") : file.write(data) < 0))
            qFatal("cannot write %s", qPrintable(path));
        file.close();
        assets << PhotoAsset {.filePath = path,
            .modified = QDateTime(QDate(2024, 3, 1), QTime(12, 0)).addDays(-assets.size()),
            .size = file.size()};
        return path;
    }
    void writeImageToSavedPhotosAlbum(const QByteArray &, Saved saved) override
    {
        saved(u"read only"_s);
    }
    void fetchAssets(PhotoAsset::MediaType, Fetched fetched) override
    {
        QMetaObject::invokeMethod(
            qApp, [this, fetched] { fetched(assets); }, Qt::QueuedConnection);
    }

    QTemporaryDir folder;
    QList<PhotoAsset> assets;
};

inline QStringList namesOf(const QList<PhotoAsset> &assets)
{
    QStringList names;
    for (const PhotoAsset &asset : assets)
        names << asset.filePath.section(u'/', -1);
    return names;
}
