#include "upload/picker/ImagePickerController.h"

#include "platform/media/PhotoLibrary.h"
#include "ui/shell/Shell.h"
#include "upload/Logging.h"
#include "upload/preparation/MediaCodecs.h"

#include <QCameraDevice>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMediaDevices>
#include <QPointer>
#include <QSet>
#include <QThreadPool>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

using Media = ImagePickerSettings::Media;

ImagePickerController::ImagePickerController(Shell *shell, PhotoLibrary *library,
    const QString &albumFolder, const ImagePickerSettings &settings, Answer answer)
    : m_shell(shell)
    , m_library(library)
    , m_settings(settings)
    , m_answer(std::move(answer))
    , m_selection(settings.maxImagesCount)
    , m_assets(&m_selection)
    , m_previewed(&m_selection)
    , m_captureFile(albumFolder,
          settings.media == Media::Videos ? CaptureFile::Kind::Clip : CaptureFile::Kind::Picture)
{
    setTitle(picksVideos() ? u"选择视频"_s : u"选择照片"_s);
    connect(&m_selection, &AssetSelection::changed, this, &ImagePickerController::selectionChanged);
    connect(shell->navigator(), &Navigator::dismissed, this, [this](const ViewController *gone) {
        if (gone == this && m_answer)
            std::exchange(m_answer, {})(std::nullopt);
    });
    // Pictures come and go while the user is in another program.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive && m_loaded)
                load();
        });
}

ImagePickerController::~ImagePickerController() = default;

ImagePickerController *ImagePickerController::present(Shell *shell, PhotoLibrary *library,
    const QString &albumFolder, const ImagePickerSettings &settings, Answer answer)
{
    const QString name = QString::fromLatin1(screenName);
    auto *picker
        = new ImagePickerController(shell, library, albumFolder, settings, std::move(answer));
    shell->navigator()->registerScreen(name, QUrl(QString::fromLatin1(screenSource)));
    shell->navigator()->present(name, picker);
    return picker;
}

void ImagePickerController::viewDidLoad()
{
    load();
}

void ImagePickerController::viewDidAppear()
{
    lookForCamera();
}

bool ImagePickerController::handleBack()
{
    if (m_stage != Stage::Grid)
        setStage(Stage::Grid);
    else
        cancel();
    return true;
}

QString ImagePickerController::doneText() const
{
    return m_selection.count() > 0 ? u"完成(%1)"_s.arg(m_selection.count()) : u"完成"_s;
}

void ImagePickerController::toggle(const QString &filePath)
{
    if (m_selection.remove(filePath))
        return;
    const auto asset = m_assets.find(filePath);
    if (!asset)
        return;
    const QFileInfo file(filePath);
    if (!file.exists()) {
        m_shell->toast()->show(picksVideos() ? u"该视频已被删除"_s : u"该照片已被删除"_s);
        forget(filePath);
    } else if (!file.isReadable()) {
        m_shell->toast()->show(picksVideos() ? u"无法读取该视频"_s : u"无法读取该照片"_s);
    } else if (!m_selection.add(*asset)) {
        const QString notice
            = picksVideos() ? u"你最多只能选择%1个视频"_s : u"你最多只能选择%1张照片"_s;
        m_shell->toast()->show(notice.arg(m_selection.limit()));
    }
}

void ImagePickerController::preview(const QString &filePath)
{
    if (const int at = m_assets.indexOf(filePath); at >= 0)
        openPreview(m_assets.assets(), at);
}

void ImagePickerController::previewSelection()
{
    if (m_selection.count() > 0)
        openPreview(m_selection.assets(), 0);
}

void ImagePickerController::openCamera()
{
    setStage(Stage::Capture);
}

void ImagePickerController::done()
{
    QStringList vanished;
    for (const PhotoAsset &asset : m_selection.assets()) {
        if (!QFileInfo::exists(asset.filePath))
            vanished << asset.filePath;
    }
    for (const QString &filePath : vanished)
        forget(filePath);
    if (!vanished.isEmpty()) // what is left may not be what the user wants to send
        m_shell->toast()->show(u"部分内容已被删除，请重新确认"_s);
    else if (m_selection.count() > 0)
        finish(m_selection.assets());
}

void ImagePickerController::cancel()
{
    finish(std::nullopt);
}

void ImagePickerController::imageFailed(const QString &filePath)
{
    if (!QFileInfo::exists(filePath))
        forget(filePath);
}

void ImagePickerController::durationKnown(const QString &filePath, double milliseconds)
{
    const std::chrono::milliseconds duration(qRound64(milliseconds));
    m_assets.setDuration(filePath, duration);
    m_previewed.setDuration(filePath, duration);
}

QString ImagePickerController::captureLocation()
{
    return m_captureFile.begin();
}

void ImagePickerController::captured()
{
    m_chosenWhenListed = m_captureFile.keep();
    if (m_chosenWhenListed.isEmpty())
        return captureFailed(u"nothing was written"_s);
    setStage(Stage::Grid);
    load();
}

void ImagePickerController::captureFailed(const QString &error)
{
    qCWarning(lcUpload).noquote() << "the camera failed:" << error;
    m_shell->toast()->showError(picksVideos() ? u"录像失败"_s : u"拍照失败"_s);
    setStage(Stage::Grid);
}

QUrl ImagePickerController::fileUrl(const QString &filePath) const
{
    return QUrl::fromLocalFile(filePath);
}

void ImagePickerController::load()
{
    m_library->fetchAssets(
        picksVideos() ? PhotoAsset::MediaType::Video : PhotoAsset::MediaType::Image,
        [self = QPointer(this)](const QList<PhotoAsset> &assets) {
            if (self)
                self->show(assets);
        });
}

void ImagePickerController::show(const QList<PhotoAsset> &assets)
{
    m_assets.update(assets);
    QSet<QString> there;
    if (m_selection.count() > 0) {
        for (const PhotoAsset &asset : assets)
            there << asset.filePath;
    }
    const QList<PhotoAsset> chosen = m_selection.assets();
    for (const PhotoAsset &asset : chosen) {
        if (!there.contains(asset.filePath))
            forget(asset.filePath);
    }
    if (m_assets.indexOf(m_chosenWhenListed) >= 0)
        toggle(std::exchange(m_chosenWhenListed, {}));
    m_loaded = true;
    Q_EMIT loadedChanged();
}

void ImagePickerController::forget(const QString &filePath)
{
    m_selection.remove(filePath);
    m_assets.remove(filePath);
    m_previewed.remove(filePath);
    if (m_stage == Stage::Preview && m_previewed.count() == 0)
        setStage(Stage::Grid);
}

void ImagePickerController::setStage(Stage stage)
{
    if (stage == m_stage)
        return;
    m_stage = stage;
    Q_EMIT stageChanged();
}

void ImagePickerController::lookForCamera()
{
    const bool allowed = picksVideos() ? m_settings.allowTakeVideo : m_settings.allowTakePicture;
    if (!allowed || !m_captureFile.isPossible())
        return;
    // The first question for cameras loads the media plugins, which can take a second.
    QThreadPool::globalInstance()->start([self = QPointer(this)] {
        MediaCodecs::shared().start();
        QMetaObject::invokeMethod(qApp, [self] {
            if (self)
                self->watchCameras();
        });
    });
}

void ImagePickerController::watchCameras()
{
    if (m_devices)
        return;
    m_devices = std::make_unique<QMediaDevices>();
    const auto update
        = [this] { m_assets.setCameraShown(!QMediaDevices::videoInputs().isEmpty()); };
    connect(m_devices.get(), &QMediaDevices::videoInputsChanged, this, update);
    update();
}

void ImagePickerController::openPreview(const QList<PhotoAsset> &assets, int start)
{
    m_previewed.replace(assets);
    m_previewStart = start;
    setStage(Stage::Preview);
}

void ImagePickerController::finish(const std::optional<QList<PhotoAsset>> &picked)
{
    if (!m_answer)
        return;
    const Answer answer = std::exchange(m_answer, {});
    m_shell->navigator()->dismiss(this);
    answer(picked);
}
