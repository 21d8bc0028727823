#include "services/scan/WCQRCodeScanningVC.h"

#include "model/StringFormat.h"
#include "net/request/LogMask.h"
#include "platform/media/CaptureDevice.h"
#include "services/Logging.h"
#include "services/scan/ScanSuccessJumpVC.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

WCQRCodeScanningVC::WCQRCodeScanningVC(
    const ScanEnvironment &environment, std::function<void()> playSound)
    : m_environment(environment)
    , m_playSound(std::move(playSound))
    , m_manager(environment.camera)
{
    connect(&m_manager, &ScanManager::didOutputMetadataObjects, this,
        &WCQRCodeScanningVC::didOutputMetadataObjects);
    connect(&m_manager, &ScanManager::didMeasureBrightness, this,
        &WCQRCodeScanningVC::didMeasureBrightness);
    connect(
        environment.camera, &CaptureDevice::frameCaptured, this, [this](const QVideoFrame &frame) {
            if (m_preview && m_scanning)
                m_preview->setVideoFrame(frame);
        });
    connect(environment.shell->navigator(), &Navigator::dismissed, this,
        [this](const ViewController *gone) {
            if (gone == container())
                close(); // another screen took this one's place
        });
    connect(environment.camera, &CaptureDevice::failed, this, [this](const QString &error) {
        qCWarning(lcServices) << "the camera failed:" << error;
        pause();
        m_environment.shell->toast()->showError(u"相机无法使用"_s);
    });
}

WCQRCodeScanningVC::~WCQRCodeScanningVC() = default;

void WCQRCodeScanningVC::viewDidAppear()
{
    // Not before: opening a camera takes the main thread for a while, which would be seen in the
    // transition.
    if (!m_albumInUse)
        resume();
}

bool WCQRCodeScanningVC::handleBack()
{
    close();
    return true;
}

void WCQRCodeScanningVC::setPreview(QVideoSink *preview)
{
    if (preview == m_preview)
        return;
    m_preview = preview;
    Q_EMIT previewChanged();
}

void WCQRCodeScanningVC::backPressed()
{
    close();
}

void WCQRCodeScanningVC::albumPressed()
{
    if (m_albumInUse || m_closed)
        return;
    m_albumInUse = true;
    pause();
    m_environment.chooseFromAlbum([self = QPointer(this)](std::optional<QString> filePath) {
        if (!self)
            return;
        if (filePath)
            return self->readAlbumFile(*filePath);
        self->m_albumInUse = false;
        self->resume();
    });
}

void WCQRCodeScanningVC::flashlightPressed()
{
    if (m_flashlight == Flashlight::NotOffered)
        return;
    const bool on = m_flashlight == Flashlight::Off;
    m_environment.camera->setTorchOn(on);
    setFlashlight(on ? Flashlight::On : Flashlight::Off);
}

void WCQRCodeScanningVC::resume()
{
    if (m_closed)
        return;
    setScanning(true);
    m_manager.start();
}

void WCQRCodeScanningVC::pause()
{
    setScanning(false);
    setFlashlight(Flashlight::NotOffered); // the torch goes out with the camera
    m_manager.stop();
}

void WCQRCodeScanningVC::setScanning(bool scanning)
{
    if (scanning == m_scanning)
        return;
    m_scanning = scanning;
    Q_EMIT scanningChanged();
}

void WCQRCodeScanningVC::setFlashlight(Flashlight flashlight)
{
    if (std::exchange(m_flashlight, flashlight) != flashlight)
        Q_EMIT flashlightChanged();
}

void WCQRCodeScanningVC::didMeasureBrightness(double brightness)
{
    if (m_flashlight == Flashlight::On)
        return;
    const bool isDark = brightness < darkBrightness;
    if (!isDark)
        setFlashlight(Flashlight::NotOffered);
    else if (m_environment.camera->hasTorch())
        setFlashlight(Flashlight::Off);
}

void WCQRCodeScanningVC::didOutputMetadataObjects(const QStringList &codes)
{
    QStringList shown = codes;
    for (QString &code : shown)
        code = LogMask::secret(code); // it may be what opens a door
    qCDebug(lcServices).noquote() << StringFormat::format(
        u"metadataObjects - - %@"_s, QVariant(shown));
    if (codes.isEmpty() || m_closed)
        return;
    const auto code
        = std::find_if(codes.begin(), codes.end(), [](const QString &c) { return !c.isEmpty(); });
    if (code == codes.end())
        return m_environment.shell->toast()->show(u"暂未识别出扫描的二维码"_s);
    m_playSound();
    const QString text = *code;
    const auto success = std::exchange(scanQrSuccessBlock, {});
    close();
    if (success)
        success(text);
}

void WCQRCodeScanningVC::readAlbumFile(const QString &filePath)
{
    const quint64 loading = m_environment.shell->toast()->showLoading(u"正在识别"_s);
    QThreadPool::globalInstance()->start(
        [self = QPointer(this), shell = QPointer(m_environment.shell), filePath, loading] {
            const QString code = CodeReader::readFile(filePath);
            // Screen and shell may be gone by now.
            QMetaObject::invokeMethod(
                qApp,
                [self, shell, loading, code] {
                    if (shell)
                        shell->toast()->hideLoading(loading);
                    if (self)
                        self->didReadAlbumFile(code);
                },
                Qt::QueuedConnection);
        });
}

void WCQRCodeScanningVC::didReadAlbumFile(const QString &code)
{
    m_albumInUse = false;
    if (m_closed)
        return;
    if (!code.isEmpty())
        return showResult(code);
    m_environment.shell->toast()->show(u"暂未识别出二维码"_s);
    resume();
}

void WCQRCodeScanningVC::showResult(const QString &code)
{
    auto *navigation = NavigationController::of(this);
    if (!navigation)
        return;
    auto *result = new ScanSuccessJumpVC;
    if (code.startsWith(u"http"))
        result->jump_URL = code;
    else
        result->jump_bar_code = code;
    navigation->push(QString::fromLatin1(ScanSuccessJumpVC::screenName), result);
}

void WCQRCodeScanningVC::close()
{
    if (std::exchange(m_closed, true))
        return;
    pause();
    m_environment.shell->navigator()->dismiss(this);
}
