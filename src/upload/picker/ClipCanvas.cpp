#include "upload/picker/ClipCanvas.h"

ClipCanvas::ClipCanvas(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &frame) {
        m_frame = frame;
        update();
    });
}

void ClipCanvas::paint(QPainter *painter)
{
    if (m_frame.isValid())
        m_frame.paint(painter, boundingRect(), {});
}
