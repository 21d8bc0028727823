#pragma once

#include <QObject>

class PhotoLibrary;
class HTTPNetwork;
class Toast;

//! Puts an image of a page into the photo album and says how it went. Owned by the home container.
class ImageSaver : public QObject
{
    Q_OBJECT

public:
    ImageSaver(HTTPNetwork *network, PhotoLibrary *album, Toast *toast);

    //! From the disk cache where it holds the image, else from the server.
    void saveImageToDiskWithUrl(const QString &url);

private:
    void didFinishSaving(const QString &error);

    HTTPNetwork *m_network;
    PhotoLibrary *m_album;
    Toast *m_toast;
};
