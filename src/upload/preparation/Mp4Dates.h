#pragma once

#include <QString>

//! Takes the times of its making out of an MP4 file, so that making it again gives the same bytes.
//! False when the file is no MP4 file or cannot be written.
bool removeMp4Dates(const QString &filePath);
