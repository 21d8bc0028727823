#pragma once

#include <QSize>

#include <functional>

class QImage;
class QImageReader;

//! Pictures that somebody else has made. How many bytes came says nothing of how much memory they
//! want, so whoever reads such a picture, reads it by this.
namespace BoundedImage {

//! In memory.
constexpr qint64 mostPixels = 100'000'000;
//! In a file, of which a smaller picture is made.
constexpr qint64 mostPixelsInFile = 268'435'456;

constexpr qint64 pixelsOf(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

//! Into how large a picture one of that size is made, before it is turned upright.
using Scaling = std::function<QSize(const QSize &size)>;

//! The picture upright, whatever the name of its file says; any thread. Null where it is none, or
//! above the bounds.
QImage read(QImageReader &reader, const Scaling &scaling = {});

//! The bound for what the toolkit reads by itself. Once, at the start of the program.
void limitToolkit();

}
