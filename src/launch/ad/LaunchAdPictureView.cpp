#include "launch/ad/LaunchAdPictureView.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace {

//! The part of the picture that has the shape of the place.
QRectF middleOf(const QSizeF &picture, const QSizeF &place)
{
    QRectF part({}, place.scaled(picture, Qt::KeepAspectRatio));
    part.moveCenter(QRectF({}, picture).center());
    return part;
}

}

LaunchAdPictureView::LaunchAdPictureView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void LaunchAdPictureView::setPicture(LaunchAdPicture *picture)
{
    if (m_picture == picture)
        return;
    if (m_picture)
        disconnect(m_picture, nullptr, this, nullptr);
    m_picture = picture;
    const auto frameChanged = [this] {
        m_frameChanged = true;
        update();
    };
    if (m_picture)
        connect(m_picture, &LaunchAdPicture::frameChanged, this, frameChanged);
    frameChanged();
    Q_EMIT pictureChanged();
}

QSGNode *LaunchAdPictureView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    const QImage frame = m_picture ? m_picture->frame() : QImage();
    if (frame.isNull() || size().isEmpty()) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        image->setFiltering(QSGTexture::Linear);
        m_frameChanged = true;
    }
    if (std::exchange(m_frameChanged, false))
        image->setTexture(window()->createTextureFromImage(frame));
    image->setRect(boundingRect());
    image->setSourceRect(middleOf(frame.size(), size()));
    return image;
}
