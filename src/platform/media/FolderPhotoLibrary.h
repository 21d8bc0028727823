#pragma once

#include "platform/media/PhotoLibrary.h"

#include <QObject>
#include <QStringList>

#include <stop_token>

//! The album as a folder of picture files, and the photos and clips in it and in other folders of
//! the user. Files are read and written off the main thread; answers come on it, for as long as the
//! library lives.
class FolderPhotoLibrary : public QObject, public PhotoLibrary
{
    Q_OBJECT

public:
    //! \a album: takes the saved pictures. \a others: are looked through too.
    explicit FolderPhotoLibrary(const QString &album, const QStringList &others = {});
    ~FolderPhotoLibrary() override;

    void writeImageToSavedPhotosAlbum(const QByteArray &encoded, Saved saved) override;
    void fetchAssets(PhotoAsset::MediaType mediaType, Fetched fetched) override;

private:
    QString m_folder;
    QStringList m_others;
    std::stop_source m_stop;
};
