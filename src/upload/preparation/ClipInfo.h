#pragma once

#include <QSize>
#include <QString>

#include <chrono>

//! What a clip says of itself.
struct ClipInfo
{
    QSize size; //!< as it is shown, upright; empty: there is nothing to see, error says why
    bool isTurned = false; //!< the stored frames lie on their side
    std::chrono::milliseconds duration {0}; //!< 0: not known
    QString error;
};
