#pragma once

#include "launch/ad/PictureFrames.h"

#include <QObject>
#include <QThreadPool>
#include <qqmlregistration.h>

#include <functional>
#include <memory>

class MainQueue;

//! The picture of a launch advertisement, still or moving. Frames are decoded on a thread of its
//! own, the next one while the present one shows. Owned by LaunchAd.
class LaunchAdPicture : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The picture belongs to the advertisement.")

public:
    using Loaded = std::function<void(bool usable)>;

    explicit LaunchAdPicture(MainQueue *mainQueue);
    ~LaunchAdPicture() override;

    //! Decodes the first frame and says once whether there is one; the motion begins with it.
    void load(const QByteArray &encoded, const QSize &area, Loaded loaded);
    //! Ends the motion and lets go of the picture.
    void clear();

    //! What to show now, null when there is nothing.
    QImage frame() const { return m_frame; }

Q_SIGNALS:
    void frameChanged();

private:
    void decodeNext(std::function<void(bool)> decoded);
    void showNext();

    MainQueue *m_mainQueue;
    std::shared_ptr<PictureFrames> m_frames;
    std::optional<PictureFrames::Frame> m_next; //!< decoded, not shown yet
    QImage m_frame;
    QThreadPool m_pool; // the last member: waits for the frame under way
};
