#include "upload/SlicingUpload.h"

#include "platform/desktop/NetworkReachabilityManager.h"
#include "platform/media/PhotoAsset.h"
#include "session/UserSession.h"
#include "ui/shell/Shell.h"
#include "upload/Logging.h"
#include "upload/UploadRun.h"
#include "upload/picker/ImagePickerController.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr int videosAtOnce = 1;

ImagePickerSettings pickerSettings(const SlicingUploadConfig &config, bool video)
{
    ImagePickerSettings settings;
    settings.media
        = video ? ImagePickerSettings::Media::Videos : ImagePickerSettings::Media::Images;
    settings.maxImagesCount = video ? videosAtOnce : config.fileNumLimit;
    settings.allowTakeVideo = config.isVideoSelect;
    settings.allowTakePicture = config.isCameraSelect;
    settings.setThemeColor(config.themeColor);
    return settings;
}

}

SlicingUpload::SlicingUpload(const Device &device, UserSession *session, Shell *shell)
    : m_device(device)
    , m_session(session)
    , m_shell(shell)
    , m_scratch(device.paths.data)
    , m_videos(device.paths.exports)
{
    connect(session, &UserSession::ending, this, &SlicingUpload::cancel);
    connect(session, &UserSession::userChanging, this, [this] { m_videos.clear(); });
}

SlicingUpload::~SlicingUpload() = default;

void SlicingUpload::pushImagePickerControllerWithConfig(
    const SlicingUploadConfig &config, bool video, const QString &asker)
{
    ImagePickerController::present(m_shell, m_device.photoLibrary, m_device.paths.album,
        pickerSettings(config, video),
        [self = QPointer(this), config, asker](const std::optional<QList<PhotoAsset>> &picked) {
            if (self && picked)
                self->didFinishPicking(config, *picked, asker);
        });
}

void SlicingUpload::didFinishPicking(
    const SlicingUploadConfig &config, const QList<PhotoAsset> &assets, const QString &asker)
{
    if (!m_device.reachability->isReachable()) {
        m_shell->toast()->showError(NetworkReachabilityManager::unreachableText());
        return;
    }
    qCDebug(lcUpload) << "reachability status"
                      << int(m_device.reachability->networkReachabilityStatus());
    Q_EMIT loginNeeded(
        [self = QPointer(this), session = m_session->number(), config, assets, asker] {
            if (self && session == self->m_session->number())
                self->startRun(config, assets, asker);
        });
}

void SlicingUpload::startRun(
    const SlicingUploadConfig &config, const QList<PhotoAsset> &assets, const QString &asker)
{
    m_runs.push_back(std::make_unique<UploadRun>(
        m_device, m_shell->toast(), &m_scratch, &m_photos, &m_videos, config));
    UploadRun *run = m_runs.back().get();
    connect(run, &UploadRun::ended, this, [this, run, asker] { didEnd(*run, asker); });
    connect(run, &UploadRun::finished, this, [this, run] { forget(run); });
    run->start(assets);
}

void SlicingUpload::cancel()
{
    m_videos.cancel();
    m_runs.clear();
}

void SlicingUpload::forget(UploadRun *run)
{
    const auto found = std::find_if(
        m_runs.begin(), m_runs.end(), [run](const auto &one) { return one.get() == run; });
    // Not at once: its own signal is being delivered.
    found->release()->deleteLater();
    m_runs.erase(found);
}

void SlicingUpload::didEnd(const UploadRun &run, const QString &asker)
{
    if (run.upMaxFileSingleSizeLimit())
        return;
    const QString text = QString::fromUtf8(QJsonDocument(run.results()).toJson());
    if (run.results().isEmpty())
        m_shell->toast()->showError(u"上传失败"_s);
    else
        Q_EMIT onSlicingUpload(text, asker);
    qCDebug(lcUpload).noquote() << u"1111%1"_s.arg(text);
}
