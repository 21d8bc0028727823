#pragma once

#include "upload/protocol/BlockWatcher.h"
#include "upload/protocol/OMStreamFragment.h"
#include "upload/protocol/SlicingUploadConfig.h"

#include <QList>

#include <memory>
#include <optional>

class QFile;

//! One local file that is uploaded in pieces: its size, its fingerprint, its fragments and their
//! bytes on demand.
//!
//! Made for one upload and owned by it. Holds the file open, so that the bytes stay readable when
//! the path is gone. For one thread at a time. Archived are the properties, not the handles and the
//! configuration.
class OMFileStreamSeparation
{
public:
    static constexpr int fragmentShift = 19;
    //! Bytes of every fragment but the last, whatever a configuration asks for.
    static constexpr quint64 fragmentLength = quint64(1) << fragmentShift;

    OMFileStreamSeparation();
    ~OMFileStreamSeparation();
    OMFileStreamSeparation(const OMFileStreamSeparation &) = delete;
    OMFileStreamSeparation &operator=(const OMFileStreamSeparation &) = delete;

    //! A fresh key of 40 lower-case hexadecimal digits.
    static QString fileKey();
    //! The MD5 of the file's bytes in lower-case hexadecimal; null when it cannot be read, or the
    //! watcher ends it.
    static QString fileKeyMD5WithPath(const QString &path, const BlockWatcher &watcher = {});
    //! Replaces the file at the path by the archived object; silent when that fails.
    static void archerTheDictionary(const OMFileStreamSeparation &object, const QString &path);
    //! Null when there is no archive at the path.
    static std::unique_ptr<OMFileStreamSeparation> unArcherThePlist(const QString &path);

    //! For reading: measures, opens and cuts the file; null when there is none. For writing: makes
    //! the file where it is missing; nothing is cut.
    static std::unique_ptr<OMFileStreamSeparation> initFileOperationAtPath(const QString &path,
        bool forReadOperation, const SlicingUploadConfig &config, const BlockWatcher &watcher = {});
    //! Fills the properties from the file; false when there is none.
    bool getFileInfoAtPath(const QString &path, const BlockWatcher &watcher = {});
    //! Makes the list of fragments anew; an empty file has none.
    void cutFileForFragments();
    //! The fragment's bytes: fewer when the file has shrunk, null when it cannot be read. No
    //! fragment: closes the file.
    QByteArray readDateOfFragment(const std::optional<OMStreamFragment> &fragment);

    QByteArray readDataOfLength(quint64 length);
    QByteArray readDataToEndOfFile();
    void writeData(const QByteArray &data);
    void seekToFileOffset(quint64 offset); //!< of the file that is read, always
    quint64 offsetInFile() const;
    quint64 seekToEndOfFile();
    void closeFile();

    int fileStatus() const { return m_fileStatus; }
    //! Counts the progress anew from the fragments, when there are any.
    void setFileStatus(int status);

    bool isReadOperation = false;
    QString fileName;
    quint64 fileSize = 0; //!< bytes
    QString filePath;
    QString md5String; //!< null: the file could not be read
    QList<OMStreamFragment> streamFragments;
    QString bizId;
    double progressRate = 0; //!< 0 to 1
    quint64 uploadDateSize = 0; //!< bytes counted as uploaded
    std::unique_ptr<QFile> readFileHandle;
    std::unique_ptr<QFile> writeFileHandle;
    SlicingUploadConfig config;

private:
    QFile *handle() const;
    bool openForReading();

    int m_fileStatus = 0;
};
