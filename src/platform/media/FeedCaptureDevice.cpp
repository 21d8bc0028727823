#include "platform/media/FeedCaptureDevice.h"

#include "platform/media/BoundedImage.h"
#include "platform/time/MainQueue.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMediaPlayer>
#include <QUrl>
#include <QVideoSink>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds frameInterval(66);
constexpr QSize largestFrame {1920, 1920};
constexpr int torchGain = 6;

QImage brightened(QImage picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        uchar *line = picture.scanLine(y);
        for (int x = 0; x < 4 * picture.width(); ++x)
            line[x] = uchar(std::min(int(line[x]) * torchGain, 255));
    }
    return picture;
}

QVideoFrame frameOf(const QImage &picture)
{
    QVideoFrame frame(QVideoFrameFormat(picture.size(), QVideoFrameFormat::Format_BGRX8888));
    if (!frame.map(QVideoFrame::WriteOnly))
        return {};
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(frame.bits(0) + qsizetype(y) * frame.bytesPerLine(0), picture.constScanLine(y),
            size_t(picture.width()) * 4);
    frame.unmap();
    return frame;
}

}

FeedCaptureDevice::FeedCaptureDevice(const QString &filePath, MainQueue &queue)
    : m_filePath(filePath)
    , m_queue(queue)
{
}

FeedCaptureDevice::~FeedCaptureDevice() = default;

bool FeedCaptureDevice::isPresent() const
{
    const QFileInfo file(m_filePath);
    return file.isFile() && file.isReadable();
}

CaptureDevice::AuthorizationStatus FeedCaptureDevice::authorizationStatus() const
{
    return AuthorizationStatus::Authorized;
}

void FeedCaptureDevice::requestAccess(std::function<void(bool granted)> answer)
{
    m_queue.after({}, this, [answer = std::move(answer)] { answer(true); });
}

void FeedCaptureDevice::start()
{
    if (m_frames || m_player)
        return;
    if (isPicture())
        showPicture();
    else
        playVideo();
}

void FeedCaptureDevice::stop()
{
    m_frames.reset();
    m_player.reset();
    m_sink.reset();
    m_frame = {};
    m_picture = {};
}

bool FeedCaptureDevice::hasTorch() const
{
    return !m_picture.isNull();
}

void FeedCaptureDevice::setTorchOn(bool on)
{
    if (hasTorch())
        m_frame = frameOf(on ? brightened(m_picture) : m_picture);
}

bool FeedCaptureDevice::isPicture() const
{
    return !QImageReader::imageFormat(m_filePath).isEmpty();
}

void FeedCaptureDevice::showPicture()
{
    QImageReader reader(m_filePath);
    m_picture = BoundedImage::read(reader).convertToFormat(QImage::Format_RGB32);
    if (m_picture.isNull()) {
        Q_EMIT failed(reader.errorString());
        return;
    }
    if (m_picture.width() > largestFrame.width() || m_picture.height() > largestFrame.height())
        m_picture = m_picture.scaled(largestFrame, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    m_frame = frameOf(m_picture);
    m_frames = m_queue.every(frameInterval, [this] { Q_EMIT frameCaptured(m_frame); });
}

void FeedCaptureDevice::playVideo()
{
    m_sink = std::make_unique<QVideoSink>();
    m_player = std::make_unique<QMediaPlayer>();
    connect(m_sink.get(), &QVideoSink::videoFrameChanged, this, &CaptureDevice::frameCaptured);
    connect(
        m_player.get(), &QMediaPlayer::errorOccurred, this,
        [this](QMediaPlayer::Error, const QString &error) { Q_EMIT failed(error); },
        Qt::QueuedConnection); // who hears it may end the player
    m_player->setVideoSink(m_sink.get());
    m_player->setLoops(QMediaPlayer::Infinite);
    m_player->setSource(QUrl::fromLocalFile(QFileInfo(m_filePath).absoluteFilePath()));
    m_player->play();
}
