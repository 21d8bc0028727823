#pragma once

#include <QObject>
#include <QVideoFrame>

#include <functional>

//! The device's camera. One for the process, owned by the application.
class CaptureDevice : public QObject
{
    Q_OBJECT

public:
    enum class AuthorizationStatus {
        NotDetermined, //!< the user has not been asked yet
        Restricted, //!< the system allows it to nobody
        Denied,
        Authorized,
    };

    //! Whether there is a camera at all.
    virtual bool isPresent() const = 0;
    virtual AuthorizationStatus authorizationStatus() const = 0;
    //! Asks the user; for NotDetermined only. Answered once, later.
    virtual void requestAccess(std::function<void(bool granted)> answer) = 0;

    //! Delivers frames of about 1920x1080 until stop(). Starting twice is starting once.
    virtual void start() = 0;
    virtual void stop() = 0;

    //! Whether there is a light to switch; known while the camera runs.
    virtual bool hasTorch() const = 0;
    //! It goes out with stop() too.
    virtual void setTorchOn(bool on) = 0;

Q_SIGNALS:
    //! On the main thread.
    void frameCaptured(const QVideoFrame &frame);
    //! The camera cannot be used any more; no frames follow.
    void failed(const QString &error);
};
