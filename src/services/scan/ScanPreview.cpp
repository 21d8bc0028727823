#include "services/scan/ScanPreview.h"

ScanPreview::ScanPreview(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &frame) {
        m_frame = frame;
        update();
    });
}

void ScanPreview::paint(QPainter *painter)
{
    if (!m_frame.isValid())
        return;
    QVideoFrame::PaintOptions options;
    options.aspectRatioMode = Qt::KeepAspectRatioByExpanding;
    m_frame.paint(painter, boundingRect(), options);
}
