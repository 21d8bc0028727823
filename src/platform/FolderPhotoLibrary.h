#pragma once

#include "platform/PhotoLibrary.h"

#include <QObject>

//! The album as a folder of picture files. Files are written off the main thread.
class FolderPhotoLibrary : public QObject, public PhotoLibrary
{
    Q_OBJECT

public:
    explicit FolderPhotoLibrary(const QString &folder);

    void writeImageToSavedPhotosAlbum(const QByteArray &encoded, Saved saved) override;

private:
    QString m_folder;
};
