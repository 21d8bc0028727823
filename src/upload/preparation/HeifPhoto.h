#pragma once

#include <QImage>
#include <QString>

class QByteArray;

//! A photo of the HEIF family, which the toolkit cannot read.
struct HeifPhoto
{
    QImage image; //!< upright; null: error says why
    QString error;

    static constexpr qint64 signatureSize = 12;
    static constexpr qint64 largestFile = 256 * 1024 * 1024; //!< bytes; it is read as a whole

    //! Whether the first signatureSize bytes of a file are those of a HEIC or HEIF photo.
    static bool isHeif(const QByteArray &start);
};
