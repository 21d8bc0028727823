#include "upload/preparation/PhotoPreparation.h"

#include "upload/Logging.h"
#include "upload/preparation/MediaCodecs.h"

#include <QBuffer>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int bestQuality = 100;

PhotoPreparation::Result failure(const QString &error)
{
    return {.data = QByteArray(), .fileExtension = {}, .error = error};
}

PhotoPreparation::Result jpegOf(QIODevice &file)
{
    if (file.size() > HeifPhoto::largestFile)
        return failure(u"too large a photo"_s);
    const auto photo = MediaCodecs::shared().decodeHeif(file.readAll());
    if (photo.image.isNull())
        return failure(photo.error);
    QBuffer jpeg;
    if (!jpeg.open(QIODevice::WriteOnly) || !photo.image.save(&jpeg, "JPEG", bestQuality))
        return failure(u"no JPEG can be made"_s);
    return {.data = jpeg.data(), .fileExtension = u"jpeg"_s, .error = {}};
}

PhotoPreparation::Result prepare(const QString &filePath)
{
    QFile file(filePath);
    // A pipe would be waited for without end.
    if (!QFileInfo(filePath).isFile() || !file.open(QIODevice::ReadOnly))
        return failure(u"the file cannot be read"_s);
    const QByteArray start = file.peek(HeifPhoto::signatureSize);
    if (HeifPhoto::isHeif(start))
        return jpegOf(file);
    QString extension;
    if (start.startsWith("\xff\xd8\xff"))
        extension = u"jpeg"_s;
    else if (start.startsWith("\x89PNG\r\n\x1a\n"))
        extension = u"png"_s;
    return {.data = UploadData::copyOf(filePath), .fileExtension = extension, .error = {}};
}

}

PhotoPreparation::PhotoPreparation()
{
    m_thread.setMaxThreadCount(1);
}

PhotoPreparation::~PhotoPreparation()
{
    m_thread.clear();
    m_thread.waitForDone();
}

void PhotoPreparation::preparePhoto(const QString &filePath, Done done)
{
    m_thread.start([this, filePath, done = std::move(done)] {
        const Result result = prepare(filePath);
        if (!result.error.isNull())
            qCWarning(lcUpload) << "a photo was not prepared:" << result.error;
        QMetaObject::invokeMethod(
            this, [done, result] { done(result); }, Qt::QueuedConnection);
    });
}
