#pragma once

#include "upload/protocol/OMUploadFileManager.h"

#include <QObject>

#include <deque>

class PhotoPreparation;
class ScratchFolder;
class Toast;
class VideoExport;
struct Device;
struct PhotoAsset;

//! What was picked at once, prepared and uploaded item by item, with the progress on the screen.
//! Single use.
//!
//! The items wait in turn for one counting semaphore that every report of every upload signals. So
//! the first report of an item lets the next one begin, further ones let later items begin early,
//! and the run ends when the last has been let by: what is reported after that is lost. That is
//! deliberate.
class UploadRun : public QObject
{
    Q_OBJECT

public:
    //! All must outlive the run.
    UploadRun(const Device &device, Toast *toast, ScratchFolder *scratch, PhotoPreparation *photos,
        VideoExport *videos, const SlicingUploadConfig &config);
    ~UploadRun() override;

    void start(const QList<PhotoAsset> &assets);

    //! One object for each item that was uploaded, in the order in which they were done.
    QJsonArray results() const { return m_results; }
    //! The only item was too large, and the user has been told so.
    bool upMaxFileSingleSizeLimit() const { return m_upMaxFileSingleSizeLimit; }

Q_SIGNALS:
    //! Once, always later than start(). The loading toast is gone. Uploads may still be under way:
    //! of a file with a failed part the other parts are sent all the same.
    void ended();
    //! After that: nothing is under way any more.
    void finished();

private:
    void startItem(int index);
    void startVideo(int index);
    void startPhoto(int index);
    void upload(int index, const UploadData &data, const QString &fileExt);
    void skip(const QString &reason);
    void signalSemaphore();
    void letNextBegin();
    void showProgress(int index, double share);
    void end();
    void finishIfIdle();

    HTTPNetwork *m_network;
    const NetworkReachabilityManager *m_reachability;
    Toast *m_toast;
    ScratchFolder *m_scratch;
    PhotoPreparation *m_photos;
    VideoExport *m_videos;
    SlicingUploadConfig m_config;
    QList<PhotoAsset> m_assets;
    std::deque<OMUploadFileManager> m_managers;
    QJsonArray m_results;
    int m_begun = 0;
    int m_uploading = 0;
    quint64 m_loadingToast = 0;
    bool m_upMaxFileSingleSizeLimit = false;
    bool m_hasEnded = false;
};
