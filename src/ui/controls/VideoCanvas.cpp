#include "ui/controls/VideoCanvas.h"

VideoCanvas::VideoCanvas(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &frame) {
        m_frame = frame;
        update();
    });
}

void VideoCanvas::paint(QPainter *painter)
{
    if (!m_frame.isValid())
        return;
    QVideoFrame::PaintOptions options;
    if (m_fillMode == PreserveAspectCrop)
        options.aspectRatioMode = Qt::KeepAspectRatioByExpanding;
    m_frame.paint(painter, boundingRect(), options);
}
