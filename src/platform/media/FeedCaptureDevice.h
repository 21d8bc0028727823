#pragma once

#include "platform/media/CaptureDevice.h"

#include <QImage>

#include <memory>

class MainQueue;
class QMediaPlayer;
class QVideoSink;
class Repetition;

//! A picture or a video that stands in for a camera, for demonstrations and tests. It is authorised
//! always. A picture is a camera with a torch, which makes it brighter; a video runs over and over.
class FeedCaptureDevice : public CaptureDevice
{
    Q_OBJECT

public:
    FeedCaptureDevice(const QString &filePath, MainQueue &queue);
    ~FeedCaptureDevice() override;

    bool isPresent() const override;
    AuthorizationStatus authorizationStatus() const override;
    void requestAccess(std::function<void(bool granted)> answer) override;
    void start() override;
    void stop() override;
    bool hasTorch() const override;
    void setTorchOn(bool on) override;

private:
    bool isPicture() const;
    void showPicture();
    void playVideo();

    QString m_filePath;
    MainQueue &m_queue;
    QVideoFrame m_frame; // the picture, as it is seen now
    QImage m_picture;
    std::unique_ptr<Repetition> m_frames;
    std::unique_ptr<QVideoSink> m_sink;
    std::unique_ptr<QMediaPlayer> m_player;
};
