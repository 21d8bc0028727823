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
    //! The order of the library: newest first; among equals one order, so that the same file found
    //! twice stands beside itself.
    static bool comesFirst(const PhotoAsset &one, const PhotoAsset &other)
    {
        return one.modified != other.modified ? one.modified > other.modified
                                              : one.filePath < other.filePath;
    }
};
