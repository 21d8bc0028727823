#pragma once

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QSize>

#include <chrono>
#include <optional>

//! Decodes a picture from a server, frame after frame; an animated one begins again after its last
//! frame. next() is made for a thread of the pool: one call at a time, from any thread.
class PictureFrames
{
public:
    struct Frame
    {
        QImage image;
        std::chrono::milliseconds delay {0}; //!< until the next one; 0: there is no next one
    };

    //! \a area: the pixels to cover; larger pictures are decoded smaller.
    PictureFrames(const QByteArray &encoded, const QSize &area);

    //! Nothing when the bytes are no picture, one of an unreasonable size, or damaged.
    std::optional<Frame> next();

private:
    void rewind();
    QImage read();

    QBuffer m_encoded;
    QSize m_area;
    QImageReader m_reader;
    bool m_begun = false;
    bool m_trusted = false;
    bool m_animated = false;
};
