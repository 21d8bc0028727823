#include "web/portal/ImageSaver.h"

#include "platform/http/PictureDownload.h"
#include "platform/media/PhotoLibrary.h"
#include "ui/feedback/Toast.h"
#include "web/Logging.h"

#include <QPointer>

using namespace Qt::StringLiterals;

ImageSaver::ImageSaver(HTTPNetwork *network, PhotoLibrary *album, Toast *toast)
    : m_network(network)
    , m_album(album)
    , m_toast(toast)
{
}

void ImageSaver::saveImageToDiskWithUrl(const QString &url)
{
    PictureDownload::session(m_network).GET(
        url, {},
        [self = QPointer(this)](const HTTPResponse &response) {
            if (!self)
                return;
            self->m_album->writeImageToSavedPhotosAlbum(
                response.body, [self](const QString &error) {
                    if (self)
                        self->didFinishSaving(error);
                });
        },
        [self = QPointer(this)](const HTTPResponse &, const HTTPError &error) {
            if (self)
                self->didFinishSaving(error.description);
        });
}

void ImageSaver::didFinishSaving(const QString &error)
{
    if (error.isNull()) {
        m_toast->showSuccess(u"保存成功"_s);
        return;
    }
    qCWarning(lcWeb) << "an image was not saved:" << error;
    m_toast->showError(u"保存失败"_s);
}
