#pragma once

#include "upload/protocol/BlockWatcher.h"

#include <QByteArray>
#include <QString>

//! What is to be uploaded: bytes, or a file whose bytes are never held together.
class UploadData
{
public:
    UploadData(const QByteArray
            &bytes); // NOLINT(google-explicit-constructor): bytes are the ordinary case
    //! A file that stays where it is.
    static UploadData copyOf(const QString &filePath);
    //! A file that nobody else needs: moved where the file system can, else copied and left.
    static UploadData taking(const QString &filePath);

    //! Bytes to be written, as far as one can know.
    qint64 size() const;

    //! Puts the content under the path in a folder that exists: whole, or not at all. Any thread.
    bool writeAtomically(const QString &path, const BlockWatcher &watcher) const;

private:
    enum class Source { Bytes, FileToCopy, FileToTake };

    UploadData(Source source, const QString &filePath);

    Source m_source;
    QByteArray m_bytes;
    QString m_filePath;
};
