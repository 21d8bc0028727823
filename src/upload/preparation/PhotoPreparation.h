#pragma once

#include "upload/protocol/UploadData.h"

#include <QObject>
#include <QThreadPool>

#include <functional>

//! What of a photo is uploaded: its file as it is, or a JPEG made of it where receivers could not
//! read it. One for the upload from pages; photos are prepared one after the other on a thread of
//! its own.
//!
//! When it is destroyed, the photo under way is still finished, and nobody is answered.
class PhotoPreparation : public QObject
{
    Q_OBJECT

public:
    struct Result
    {
        UploadData data {QByteArray()};
        //! By content, not by name: "jpeg", "png", or empty for any other kind.
        QString fileExtension;
        //! Null: prepared.
        QString error;
    };
    //! Main thread.
    using Done = std::function<void(const Result &)>;

    PhotoPreparation();
    ~PhotoPreparation() override;

    //! HEIC and HEIF become JPEG in the best quality, upright; everything else goes as it is,
    //! whatever it is.
    void preparePhoto(const QString &filePath, Done done);

private:
    QThreadPool m_thread;
};
