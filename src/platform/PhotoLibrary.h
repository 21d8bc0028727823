#pragma once

#include <QString>

#include <functional>

class QByteArray;

//! The user's photo album.
class PhotoLibrary
{
public:
    //! Null text: saved.
    using Saved = std::function<void(const QString &error)>;

    virtual ~PhotoLibrary() = default;

    //! Adds an encoded image (JPEG, PNG, …) to the album as it is; data that is no image is an
    //! error.
    virtual void writeImageToSavedPhotosAlbum(const QByteArray &encoded, Saved saved) = 0;
};
