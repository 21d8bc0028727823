#pragma once

#include "platform/media/CameraPortal.h"
#include "platform/media/CaptureDevice.h"

#include <memory>

class QCamera;
class QMediaCaptureSession;
class QVideoSink;
class UserDefaults;

//! The system's default camera.
//!
//! Where the desktop asks for cameras, it is asked once and its answer is remembered under
//! "CameraAuthorization"; elsewhere the access rights of the video devices decide, each time.
class SystemCaptureDevice : public CaptureDevice
{
    Q_OBJECT

public:
    //! \a deviceFolder: where the system keeps its video devices.
    explicit SystemCaptureDevice(UserDefaults *defaults,
        const QDBusConnection &bus = QDBusConnection::sessionBus(),
        const QString &deviceFolder = QStringLiteral("/dev"));
    ~SystemCaptureDevice() override;

    bool isPresent() const override;
    AuthorizationStatus authorizationStatus() const override;
    void requestAccess(std::function<void(bool granted)> answer) override;
    void start() override;
    void stop() override;
    bool hasTorch() const override;
    void setTorchOn(bool on) override;

private:
    bool mayOpenDevices() const;
    //! Remembers what the desktop has answered for good; whether the camera may be used.
    bool take(CameraPortal::Answer answer);

    UserDefaults *m_defaults;
    QString m_deviceFolder;
    CameraPortal m_portal;
    bool m_desktopAsks;
    bool m_forbidden = false;
    // While the camera runs.
    std::unique_ptr<QVideoSink> m_sink;
    std::unique_ptr<QCamera> m_camera;
    std::unique_ptr<QMediaCaptureSession> m_session;
};
