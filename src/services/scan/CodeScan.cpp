#include "services/scan/CodeScan.h"

#include "platform/media/CaptureDevice.h"
#include "services/Logging.h"
#include "services/scan/ScanSuccessJumpVC.h"
#include "services/scan/WCQRCodeScanningVC.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

#include <QMediaDevices>
#include <QAudioDevice>
#include <QSoundEffect>

using namespace Qt::StringLiterals;

using Status = CaptureDevice::AuthorizationStatus;

namespace {

template <typename Screen>
void registerScreen(Navigator *navigator)
{
    navigator->registerScreen(
        QString::fromLatin1(Screen::screenName), QUrl(QString::fromLatin1(Screen::screenSource)));
}

}

CodeScan::CodeScan(const ScanEnvironment &environment)
    : m_environment(environment)
{
    registerScreen<WCQRCodeScanningVC>(environment.shell->navigator());
    registerScreen<ScanSuccessJumpVC>(environment.shell->navigator());
}

CodeScan::~CodeScan() = default;

void CodeScan::scanQrCode(std::function<void(const QString &)> scanQrSuccessBlock)
{
    if (m_waiting || (m_scanner && !m_scanner->isClosed()))
        return;
    auto scanner = std::make_unique<WCQRCodeScanningVC>(m_environment, [this] { playSound(); });
    scanner->scanQrSuccessBlock = std::move(scanQrSuccessBlock);
    QRCodeScanVC(std::move(scanner));
}

void CodeScan::QRCodeScanVC(std::unique_ptr<WCQRCodeScanningVC> scanner)
{
    if (!m_environment.camera->isPresent())
        return alert(u"未检测到您的摄像头"_s);
    switch (m_environment.camera->authorizationStatus()) {
    case Status::NotDetermined:
        return askAndPresent(std::move(scanner));
    case Status::Restricted:
        // It speaks of the album although it is about the camera; deliberate.
        qCDebug(lcServices).noquote() << u"因为系统原因, 无法访问相册"_s;
        return;
    case Status::Denied:
        return alert(u"请去-> [设置 - 隐私 - 相机 - SGQRCodeExample] 打开访问开关"_s);
    case Status::Authorized:
        return present(std::move(scanner));
    }
}

void CodeScan::askAndPresent(std::unique_ptr<WCQRCodeScanningVC> scanner)
{
    m_waiting = std::move(scanner);
    m_environment.camera->requestAccess([self = QPointer(this)](bool granted) {
        if (!self)
            return;
        auto waiting = std::move(self->m_waiting);
        if (granted)
            self->present(std::move(waiting));
    });
}

void CodeScan::present(std::unique_ptr<WCQRCodeScanningVC> scanner)
{
    Navigator *navigator = m_environment.shell->navigator();
    auto *navigation = new NavigationController(
        navigator, QString::fromLatin1(WCQRCodeScanningVC::screenName), scanner.get());
    m_scanner = scanner.release();
    m_scanner->setParent(navigation);
    navigator->present(QString::fromLatin1(NavigationController::screenName), navigation);
}

void CodeScan::alert(const QString &message)
{
    m_environment.shell->alertView()->show(
        {.title = u"温馨提示"_s, .message = message, .buttons = {Alert::confirm}, .backButton = 0});
}

void CodeScan::playSound()
{
    // Without a device to hear it from, the sound would only be tried in vain.
    if (QMediaDevices::defaultAudioOutput().isNull())
        return;
    if (!m_sound) {
        m_sound = std::make_unique<QSoundEffect>();
        m_sound->setSource(QUrl(u"qrc:/assets/scan_sound.wav"_s));
    }
    m_sound->play();
}
