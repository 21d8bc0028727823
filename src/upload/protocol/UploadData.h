#pragma once

#include "upload/protocol/BlockWatcher.h"

#include <QByteArray>
#include <QString>

#include <variant>

//! What is to be uploaded: bytes, or a file whose bytes are never held together.
class UploadData
{
public:
    UploadData(const QByteArray
            &bytes); // NOLINT(google-explicit-constructor): bytes are the ordinary case
    //! A file that stays where it is.
    static UploadData copyOf(const QString &filePath);

    //! Bytes to be written, as far as one can know.
    qint64 size() const;

    //! Puts the content under the path in a folder that exists: whole, or not at all. Any thread.
    bool writeAtomically(const QString &path, const BlockWatcher &watcher) const;

private:
    struct File
    {
        QString path;
    };

    UploadData(const File &file);

    std::variant<QByteArray, File> m_content;
};
