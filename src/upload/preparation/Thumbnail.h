#pragma once

#include <QImage>
#include <QString>

#include <chrono>
#include <stop_token>

//! A small picture of a photo or a clip, upright. For a worker thread: reading takes from a few
//! milliseconds to some tenths of a second.
struct Thumbnail
{
    QImage image; //!< null: the file is damaged, gone or of no known kind
    std::chrono::milliseconds duration {0}; //!< of a clip; 0 for a photo, or when it is not known

    //! \a side: of the square, in pixels. The picture is cut to the square from its middle
    //! (KeepAspectRatioByExpanding) or fits into it whole (KeepAspectRatio). It is never enlarged.
    //! A clip shows its first frame that is more than one colour. A stop, such as the program's
    //! end, is answered within a tenth of a second by no image.
    static Thumbnail ofPhoto(const QString &filePath, int side,
        Qt::AspectRatioMode mode = Qt::KeepAspectRatioByExpanding);
    static Thumbnail ofVideo(const QString &filePath, int side,
        Qt::AspectRatioMode mode = Qt::KeepAspectRatioByExpanding, std::stop_token stop = {});
};
