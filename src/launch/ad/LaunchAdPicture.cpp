#include "launch/ad/LaunchAdPicture.h"

#include "platform/time/MainQueue.h"

LaunchAdPicture::LaunchAdPicture(MainQueue *mainQueue)
    : m_mainQueue(mainQueue)
{
    m_pool.setMaxThreadCount(1);
}

LaunchAdPicture::~LaunchAdPicture() = default;

void LaunchAdPicture::load(const QByteArray &encoded, const QSize &area, Loaded loaded)
{
    m_frames = std::make_shared<PictureFrames>(encoded, area);
    decodeNext([this, loaded = std::move(loaded)](bool decoded) {
        if (decoded)
            showNext();
        loaded(decoded);
    });
}

void LaunchAdPicture::clear()
{
    m_frames.reset();
    m_next.reset();
    m_frame = {};
    Q_EMIT frameChanged();
}

void LaunchAdPicture::decodeNext(std::function<void(bool)> decoded)
{
    m_pool.start([this, frames = m_frames, decoded = std::move(decoded)] {
        const std::optional<PictureFrames::Frame> frame = frames->next();
        QMetaObject::invokeMethod(
            this,
            [this, frames, frame, decoded] {
                if (frames != m_frames)
                    return;
                if (frame)
                    m_next = frame;
                decoded(frame.has_value());
            },
            Qt::QueuedConnection);
    });
}

void LaunchAdPicture::showNext()
{
    const PictureFrames::Frame frame = *std::exchange(m_next, std::nullopt);
    m_frame = frame.image;
    Q_EMIT frameChanged();
    if (frame.delay.count() == 0)
        return;
    // Shown when both its time has come and it is decoded, whichever is later.
    const auto awaited = std::make_shared<int>(2);
    const auto arrived = [this, awaited, frames = std::weak_ptr(m_frames)] {
        if (--*awaited == 0 && !frames.expired() && frames.lock() == m_frames)
            showNext();
    };
    m_mainQueue->after(frame.delay, this, arrived);
    decodeNext([arrived](bool decoded) {
        // A damaged frame ends the motion at the last good one.
        if (decoded)
            arrived();
    });
}
