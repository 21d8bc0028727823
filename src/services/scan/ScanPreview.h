#pragma once

#include <QQuickPaintedItem>
#include <QVideoFrame>
#include <QVideoSink>
#include <qqmlregistration.h>

//! Shows the camera where Qt Quick draws without a graphics processor, which the media module's own
//! output needs. The picture fills the item and is cut where it is too wide or too high.
class ScanPreview : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVideoSink *videoSink READ videoSink CONSTANT)

public:
    explicit ScanPreview(QQuickItem *parent = nullptr);

    QVideoSink *videoSink() { return &m_sink; }
    void paint(QPainter *painter) override;

private:
    QVideoSink m_sink;
    QVideoFrame m_frame;
};
