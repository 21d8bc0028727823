#pragma once

#include <QByteArray>

class QVideoFrame;

//! The brightness of each pixel of a mapped frame: a view of the frame where its format keeps it in
//! one piece, else a copy. Lives no longer than the mapping.
struct LumaPlane
{
    //! A frame that is mapped for reading.
    explicit LumaPlane(const QVideoFrame &frame);

    bool isEmpty() const { return !bits; }
    //! The mean of a grid of samples, 0 to 255.
    double mean() const;

    const uchar *bits = nullptr;
    int width = 0;
    int height = 0;
    int bytesPerLine = 0;

private:
    void copyEverySecondByte(const QVideoFrame &frame, int first);
    void convert(const QVideoFrame &frame);

    QByteArray m_copy;
};
