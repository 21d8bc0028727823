#pragma once

#include <QString>

#include <optional>
#include <stop_token>

//! The folder that keeps finished exports, by what went into them. One process at a time uses it;
//! worker threads.
//!
//! An export is whole or not there: it is written under another name and then renamed. What a
//! killed process left half done is removed at the next addition.
class ExportCache
{
public:
    static constexpr int capacity = 8;

    explicit ExportCache(const QString &folder);

    //! Names the export of a clip: by its content and the settings. Null when the clip cannot be
    //! read, or at a stop.
    static QString keyFor(
        const QString &clipPath, const QByteArray &settings, std::stop_token stop);

    //! The path of a finished export, which counts as used now; null when there is none.
    QString find(const QString &key) const;
    //! Where to write an export that is under way. Null when the folder cannot be made.
    QString pathForWriting(const QString &key) const;
    //! Makes what was written there the finished export and drops the oldest ones beyond the
    //! capacity. Its path; null when the disk refuses.
    QString add(const QString &key) const;
    //! Removes what was written of an export that failed.
    void discard(const QString &key) const;
    //! Removes all exports.
    void clear() const;

private:
    QString finished(const QString &key) const;
    QString unfinished(const QString &key) const;
    void prune() const;

    QString m_folder;
};
