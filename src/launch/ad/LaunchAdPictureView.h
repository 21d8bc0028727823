#pragma once

#include "launch/ad/LaunchAdPicture.h"

#include <QPointer>
#include <QQuickItem>

//! Draws the present frame of a picture so that it fills the item; what does not fit is cut off
//! evenly.
class LaunchAdPictureView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(LaunchAdPicture *picture READ picture WRITE setPicture NOTIFY pictureChanged)

public:
    explicit LaunchAdPictureView(QQuickItem *parent = nullptr);

    LaunchAdPicture *picture() const { return m_picture; }
    void setPicture(LaunchAdPicture *picture);

Q_SIGNALS:
    void pictureChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QPointer<LaunchAdPicture> m_picture;
    bool m_frameChanged = false;
};
