#include "upload/UploadRun.h"

#include "platform/Device.h"
#include "platform/media/PhotoAsset.h"
#include "ui/feedback/Toast.h"
#include "upload/Logging.h"
#include "upload/preparation/PhotoPreparation.h"
#include "upload/preparation/VideoExport.h"

#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

// Shares of an item's progress: the export of a clip, then copying and hashing, then the network.
constexpr double exportEnd = 0.4;
constexpr double preparationEnd = 0.5;

}

UploadRun::UploadRun(const Device &device, Toast *toast, ScratchFolder *scratch,
    PhotoPreparation *photos, VideoExport *videos, const SlicingUploadConfig &config)
    : m_network(device.network)
    , m_reachability(device.reachability)
    , m_toast(toast)
    , m_scratch(scratch)
    , m_photos(photos)
    , m_videos(videos)
    , m_config(config)
{
}

UploadRun::~UploadRun()
{
    m_toast->hideLoading(m_loadingToast);
}

void UploadRun::start(const QList<PhotoAsset> &assets)
{
    m_assets = assets;
    m_loadingToast = m_toast->showLoading(u"上传中..."_s);
    QMetaObject::invokeMethod(this, &UploadRun::letNextBegin, Qt::QueuedConnection);
}

void UploadRun::letNextBegin()
{
    if (m_begun == m_assets.size())
        end();
    else
        startItem(m_begun++);
}

// Waits in turn: whoever signals while nobody waits leaves it for the next that will.
void UploadRun::signalSemaphore()
{
    if (!m_hasEnded)
        QMetaObject::invokeMethod(this, &UploadRun::letNextBegin, Qt::QueuedConnection);
}

void UploadRun::startItem(int index)
{
    showProgress(index, 0);
    if (m_assets.at(index).isVideo)
        startVideo(index);
    else
        startPhoto(index);
}

void UploadRun::startVideo(int index)
{
    const QFileInfo file(m_assets.at(index).filePath);
    if (!file.isFile())
        return skip(u"the clip is no local file"_s);
    if (m_config.maxFileSingleSizeLimit < double(file.size())) {
        if (m_assets.size() == 1) {
            m_upMaxFileSingleSizeLimit = true;
            m_toast->hideLoading(m_loadingToast);
            m_toast->showError(u"上传失败：单个文件大小超过最大限制"_s);
        }
        return skip(u"the clip is too large"_s);
    }
    m_videos->exportClip(
        file.filePath(),
        [self = QPointer(this), index](double share) {
            if (self)
                self->showProgress(index, exportEnd * share);
        },
        [self = QPointer(this), index](const VideoExport::Result &result) {
            if (!self)
                return;
            if (result.filePath.isNull())
                self->skip(result.error);
            else
                self->upload(index, UploadData::copyOf(result.filePath), u""_s);
        });
}

void UploadRun::startPhoto(int index)
{
    m_photos->preparePhoto(m_assets.at(index).filePath,
        [self = QPointer(this), index](const PhotoPreparation::Result &result) {
            if (!self)
                return;
            if (result.error.isNull())
                self->upload(index, result.data, result.fileExtension);
            else
                self->skip(result.error);
        });
}

void UploadRun::skip(const QString &reason)
{
    qCWarning(lcUpload).noquote() << "an item is not uploaded:" << reason;
    signalSemaphore();
}

void UploadRun::upload(int index, const UploadData &data, const QString &fileExt)
{
    const bool isVideo = m_assets.at(index).isVideo;
    OMUploadFileManager &manager = m_managers.emplace_back(m_network, m_reachability, m_scratch);
    connect(&manager, &OMUploadFileManager::preparationProgressed, this,
        [this, index](qint64 done, qint64 total) {
            showProgress(index,
                exportEnd
                    + (preparationEnd - exportEnd) * double(done) / double(qMax<qint64>(total, 1)));
        });
    connect(
        &manager, &OMUploadFileManager::uploadProgressed, this, [this, index](int done, int total) {
            showProgress(index, preparationEnd + (1 - preparationEnd) * done / qMax(total, 1));
        });
    ++m_uploading;
    connect(&manager, &OMUploadFileManager::ended, this, [this] {
        --m_uploading;
        finishIfIdle();
    });
    manager.startExeUploadWithData(data, isVideo, fileExt, m_config,
        [this, isVideo](bool success, const OMUploadFileManager::Result &result) {
            qCDebug(lcUpload).noquote() << (isVideo ? u"上传视频回调了"_s : u"上传图片回调了"_s);
            if (success && result && result->size() == 1 && !m_hasEnded)
                m_results << result->first();
            signalSemaphore();
        });
}

void UploadRun::showProgress(int index, double share)
{
    if (!m_upMaxFileSingleSizeLimit && !m_hasEnded)
        m_toast->showProgress(m_loadingToast, (index + share) / double(m_assets.size()));
}

void UploadRun::end()
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_toast->hideLoading(m_loadingToast);
    Q_EMIT ended();
    finishIfIdle();
}

void UploadRun::finishIfIdle()
{
    if (m_hasEnded && m_uploading == 0)
        Q_EMIT finished();
}
