#pragma once

#include "platform/media/PhotoAsset.h"

#include <QList>

#include <functional>

class QByteArray;

//! The user's photo album.
class PhotoLibrary
{
public:
    //! Null text: saved.
    using Saved = std::function<void(const QString &error)>;
    using Fetched = std::function<void(const QList<PhotoAsset> &assets)>;

    virtual ~PhotoLibrary() = default;

    //! Adds an encoded image (JPEG, PNG, …) to the album as it is; data that is no image is an
    //! error.
    virtual void writeImageToSavedPhotosAlbum(const QByteArray &encoded, Saved saved) = 0;

    //! The photos, or the clips, that are there now, newest first. What is one is told by its name
    //! only.
    virtual void fetchAssets(PhotoAsset::MediaType mediaType, Fetched fetched) = 0;
};
