#pragma once

#include <QImage>
#include <QString>

class QByteArray;

//! A photo of the HEIF family, which the toolkit cannot read.
struct HeifPhoto
{
    QImage image; //!< upright; null: error says why
    QString error;

    //! Whether the first bytes of a file are those of a HEIC or HEIF photo; twelve are enough.
    static bool isHeif(const QByteArray &start);
};
