#pragma once

#include <QQuickPaintedItem>
#include <QVideoFrame>
#include <QVideoSink>
#include <qqmlregistration.h>

//! Shows a clip where Qt Quick draws without a graphics processor: there the media module's own
//! output stays empty.
class ClipCanvas : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVideoSink *videoSink READ videoSink CONSTANT)

public:
    explicit ClipCanvas(QQuickItem *parent = nullptr);

    //! Asked for by its name when the item is given to a player.
    Q_INVOKABLE QVideoSink *videoSink() { return &m_sink; }
    void paint(QPainter *painter) override;

private:
    QVideoFrame m_frame;
    QVideoSink m_sink; // sends a last, empty frame when it goes
};
