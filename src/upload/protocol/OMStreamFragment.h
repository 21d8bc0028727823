#pragma once

#include <QCborMap>
#include <QString>

//! One piece of a file that is uploaded in pieces.
struct OMStreamFragment
{
    bool fragmentStatus = false; //!< uploaded
    QString fragmentId; //!< names the fragment among all others
    quint64 fragmentSize = 0; //!< bytes
    quint64 fragementOffset = 0; //!< bytes from the start of the file

    //! The archived form, by key.
    QCborMap encoded() const;
    static OMStreamFragment decoded(const QCborMap &archive);

    bool operator==(const OMStreamFragment &) const = default;
};
