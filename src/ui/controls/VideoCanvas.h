#pragma once

#include <QQuickPaintedItem>
#include <QVideoFrame>
#include <QVideoSink>
#include <qqmlregistration.h>

//! Shows a clip or a camera where Qt Quick draws without a graphics processor: there the media
//! module's own output stays empty.
class VideoCanvas : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVideoSink *videoSink READ videoSink CONSTANT)
    Q_PROPERTY(FillMode fillMode MEMBER m_fillMode)

public:
    //! The whole picture inside the item, or the item filled and the picture cut.
    enum FillMode { PreserveAspectFit, PreserveAspectCrop };
    Q_ENUM(FillMode)

    explicit VideoCanvas(QQuickItem *parent = nullptr);

    //! Asked for by its name when the item is given to a player.
    Q_INVOKABLE QVideoSink *videoSink() { return &m_sink; }
    void paint(QPainter *painter) override;

private:
    FillMode m_fillMode = PreserveAspectFit;
    QVideoFrame m_frame;
    QVideoSink m_sink; // sends a last, empty frame when it goes
};
