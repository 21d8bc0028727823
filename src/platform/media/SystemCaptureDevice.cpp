#include "platform/media/SystemCaptureDevice.h"

#include "platform/storage/UserDefaults.h"

#include <QCamera>
#include <QCameraDevice>
#include <QDir>
#include <QFileInfo>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QVideoSink>

#include <algorithm>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString rememberedKey = QStringLiteral("CameraAuthorization");
const QString authorized = QStringLiteral("authorized");
const QString denied = QStringLiteral("denied");

constexpr QSize preset {1920, 1080};

// The format nearest to the preset, of those the one with the most frames.
QCameraFormat bestFormat(const QCameraDevice &device)
{
    const auto rank = [](const QCameraFormat &format) {
        const QSize size = format.resolution();
        const int away
            = std::abs(size.width() - preset.width()) + std::abs(size.height() - preset.height());
        return std::pair(-away, format.maxFrameRate());
    };
    const QList<QCameraFormat> formats = device.videoFormats();
    const auto best = std::max_element(formats.begin(), formats.end(),
        [&](const auto &a, const auto &b) { return rank(a) < rank(b); });
    return best == formats.end() ? QCameraFormat() : *best;
}

}

SystemCaptureDevice::SystemCaptureDevice(
    UserDefaults *defaults, const QDBusConnection &bus, const QString &deviceFolder)
    : m_defaults(defaults)
    , m_deviceFolder(deviceFolder)
    , m_portal(bus)
    , m_desktopAsks(m_portal.isPresent())
{
}

SystemCaptureDevice::~SystemCaptureDevice() = default;

bool SystemCaptureDevice::isPresent() const
{
    return !QMediaDevices::defaultVideoInput().isNull();
}

CaptureDevice::AuthorizationStatus SystemCaptureDevice::authorizationStatus() const
{
    if (m_forbidden)
        return AuthorizationStatus::Restricted;
    if (!m_desktopAsks)
        return mayOpenDevices() ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied;
    const QString remembered = m_defaults->stringForKey(rememberedKey);
    if (remembered == authorized)
        return AuthorizationStatus::Authorized;
    return remembered == denied ? AuthorizationStatus::Denied : AuthorizationStatus::NotDetermined;
}

void SystemCaptureDevice::requestAccess(std::function<void(bool granted)> answer)
{
    m_portal.accessCamera(
        [this, answer = std::move(answer)](CameraPortal::Answer given) { answer(take(given)); });
}

void SystemCaptureDevice::start()
{
    if (m_session)
        return;
    const QCameraDevice device = QMediaDevices::defaultVideoInput();
    m_sink = std::make_unique<QVideoSink>();
    m_camera = std::make_unique<QCamera>(device);
    m_session = std::make_unique<QMediaCaptureSession>();
    m_camera->setCameraFormat(bestFormat(device));
    connect(m_sink.get(), &QVideoSink::videoFrameChanged, this, &CaptureDevice::frameCaptured);
    connect(
        m_camera.get(), &QCamera::errorOccurred, this,
        [this](QCamera::Error, const QString &error) { Q_EMIT failed(error); },
        Qt::QueuedConnection); // who hears it may end the camera
    m_session->setCamera(m_camera.get());
    m_session->setVideoSink(m_sink.get());
    m_camera->start();
}

void SystemCaptureDevice::stop()
{
    if (m_camera)
        m_camera->stop();
    m_session.reset();
    m_camera.reset();
    m_sink.reset();
}

bool SystemCaptureDevice::hasTorch() const
{
    return m_camera && m_camera->isTorchModeSupported(QCamera::TorchOn);
}

void SystemCaptureDevice::setTorchOn(bool on)
{
    if (m_camera)
        m_camera->setTorchMode(on ? QCamera::TorchOn : QCamera::TorchOff);
}

bool SystemCaptureDevice::mayOpenDevices() const
{
    const QFileInfoList devices
        = QDir(m_deviceFolder).entryInfoList({u"video*"_s}, QDir::System | QDir::Files);
    return std::any_of(devices.begin(), devices.end(),
        [](const QFileInfo &device) { return device.isReadable() && device.isWritable(); });
}

bool SystemCaptureDevice::take(CameraPortal::Answer answer)
{
    switch (answer) {
    case CameraPortal::Answer::Granted:
    case CameraPortal::Answer::Refused:
        m_defaults->setObject(
            answer == CameraPortal::Answer::Granted ? authorized : denied, rememberedKey);
        m_defaults->synchronize();
        return answer == CameraPortal::Answer::Granted;
    case CameraPortal::Answer::Missing:
        m_desktopAsks = false;
        return mayOpenDevices();
    case CameraPortal::Answer::Forbidden:
        m_forbidden = true;
        return false;
    case CameraPortal::Answer::Interrupted:
        return false;
    }
    return false;
}
