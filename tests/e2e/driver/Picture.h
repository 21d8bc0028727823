#pragma once

#include <QImage>
#include <QRectF>

class QQuickWindow;

//! A photograph of a window, in the window's own points.
class Picture
{
public:
    static Picture of(QQuickWindow *window);

    //! The same without its upper part, down to there.
    Picture below(double y) const;
    QColor colorAt(QPointF point) const;
    //! Whether something is to be told apart from its ground there: a text, an icon.
    bool hasInk(const QRectF &place) const;
    bool save(const QString &filePath) const;

    bool operator==(const Picture &) const = default;

private:
    QImage m_image;
    double m_scale = 1;
};
