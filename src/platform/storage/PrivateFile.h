#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

//! Files that only their owner may read, replaced whole or not at all.
namespace PrivateFile {

//! Makes the folder of a file that is about to be written, mode 0700 where it is new.
void makeParentFolder(const QString &filePath);

//! Readies a file for QSettings, which leaves the mode of a file that exists: its folder, and mode
//! 0600. Only for the one process that writes it: a lock that a killed one has left behind, and
//! that may hold up the next for half a minute, goes.
void prepareSettings(const QString &filePath);

//! Replaces the file's content, mode 0600; false when the disk refuses, the old content then
//! stands.
bool write(const QString &filePath, const QByteArray &content);

//! The content, or nothing when the file is missing or unreadable.
std::optional<QByteArray> read(const QString &filePath);

}
