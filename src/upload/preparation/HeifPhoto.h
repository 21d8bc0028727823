#pragma once

#include <QImage>
#include <QString>

class QByteArray;

//! Photos of the HEIF family, which the toolkit cannot read. Any thread.
namespace HeifPhoto {

//! Whether the first bytes of a file are those of a HEIC or HEIF photo; twelve are enough.
bool isHeif(const QByteArray &start);

struct Decoded
{
    QImage image; //!< upright; null: error says why
    QString error;
};

//! The main picture of a file, in its full size.
Decoded decode(const QByteArray &file);
//! The smallest picture in the file whose shorter side has that many pixels: often a small one that
//! is there for this purpose.
Decoded decodeSmall(const QByteArray &file, int side);

}
