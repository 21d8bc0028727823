#pragma once

#include "upload/protocol/FragmentCalls.h"
#include "upload/protocol/OMFileStreamSeparation.h"
#include "upload/protocol/UploadCalls.h"
#include "upload/protocol/UploadData.h"

#include <QJsonArray>
#include <QThreadPool>

#include <atomic>

class FragmentQueue;
class NetworkReachabilityManager;
class ScratchFolder;

//! Uploads one photo or video in fragments: asks the file service whether it has the file, else for
//! every fragment, puts what is missing to the object storage and has the parts joined. One object
//! for one file, owned by who uploads.
//!
//! All calls and answers on the main thread; copying, hashing and reading happen on threads of its
//! own. It may be deleted at any moment, inside its own reports too: that cancels the calls, ends
//! the threads, and nothing more is reported. No state survives it: what the service has already is
//! what it answers.
class OMUploadFileManager : public QObject, public FragmentCalls
{
    Q_OBJECT

public:
    //! One object with "filePath", "host", "isError", "isUploaded" and "uploadId", as the check of
    //! the file answered; nothing when that was not reached: no network, or the data could not be
    //! written.
    using Result = std::optional<QJsonArray>;
    using Completion = std::function<void(bool success, const Result &result)>;
    using Checked = std::function<void(bool isUploaded)>;

    //! \a scratch: shared by all managers; it and the others outlive the manager.
    OMUploadFileManager(HTTPNetwork *network, const NetworkReachabilityManager *reachability,
        ScratchFolder *scratch, QObject *parent = nullptr);
    ~OMUploadFileManager() override;

    //! The one entry point. Calls back at least once; a part that fails is reported as it happens
    //! and the next goes on, so after a failure a success may follow, and the last report is the
    //! outcome.
    void startExeUploadWithData(const UploadData &data, bool isVideo, const QString &fileExt,
        const SlicingUploadConfig &config, Completion completion);
    //! Uploads the fragments of the file streamer; reports as above. A file without fragments is
    //! reported as a failure.
    void uploadWithCompletion(Reported completion);

    //! The calls of the service, answered once and later; a failed one answers "no". Indexes are
    //! part numbers, from 1.
    void checkFileServiceWithHash(const QString &hash, const QString &ext, Checked completion);
    void checkChunkHasUploadWithIndex(
        int index, const QString &mineType, ChunkChecked completion) override;
    void finishChuckWithIndex(int index, const QString &mineType, const QString &authorization,
        const QString &date, Reported completion) override;
    void completeUpload(Reported completion) override;
    void uploadData(const QByteArray &data, int index, const QString &mineType,
        const QString &authorization, const QString &date, Reported completion) override;

    //! The scratch folder, made where it is missing.
    QString cahcePath() const;
    //! Removes the scratch folder, which all managers share. What they have open stays readable.
    void clearCahce();

    std::shared_ptr<OMFileStreamSeparation> fileStreamer;
    int currentIndex = 0;
    SlicingUploadConfig config;
    QString host; //!< the storage's address for the file, from the check of the file as are the
                  //!< next two
    QString uploadId;
    QString filePath; //!< the stored object's key
    QString hashKey; //!< MD5 of the content
    QString mineType; //!< content type

Q_SIGNALS:
    //! Written and then hashed: the total is twice the size.
    void preparationProgressed(qint64 bytesDone, qint64 bytesTotal);
    //! Parts that have come to their end, good or bad.
    void uploadProgressed(int partsDone, int partsTotal);
    //! Nothing more is done or reported.
    void ended();

private:
    std::shared_ptr<OMFileStreamSeparation> prepared(
        const UploadData &data, const QString &ext, const SlicingUploadConfig &config);
    BlockWatcher watcher(qint64 before, qint64 total);
    void didPrepare(const QString &ext, const Completion &completion);
    void didCheckFile(bool isUploaded, const Completion &completion);
    void reportAndClear(const Completion &completion, bool success, const Result &result);
    void reportAndEnd(const Completion &completion, bool success, const Result &result);
    void post(
        const QString &path, const HTTPParameters &parameters, UploadCalls::Answered answered);

    const NetworkReachabilityManager *m_reachability;
    ScratchFolder *m_scratch;
    UploadCalls m_calls;
    std::atomic<bool> m_isEnding = false;
    bool m_isCleared = false;
    std::unique_ptr<FragmentQueue> m_fragments;
    QThreadPool m_worker;
};
