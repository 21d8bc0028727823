#pragma once

#include <QSize>
#include <QString>

#include <chrono>
#include <stop_token>

//! What a clip says of itself, read without decoding more than its first frame.
struct ClipInfo
{
    QSize size; //!< as it is shown, upright; empty: there is nothing to see, error says why
    bool isTurned = false; //!< the stored frames lie on their side
    std::chrono::milliseconds duration {0}; //!< 0: not known
    QString error;

    //! Worker threads only. A stop ends the reading within a tenth of a second.
    static ClipInfo read(const QString &filePath, std::stop_token stop);
};
