#pragma once

#include <QDateTime>
#include <QString>

//! A photo or a clip of the library: a local file.
struct PhotoAsset
{
    enum class MediaType { Image, Video };

    QString filePath; //!< absolute, symbolic links resolved
    bool isVideo = false;
    QDateTime modified;
    qint64 size = 0; //!< bytes

    bool operator==(const PhotoAsset &) const = default;
};
