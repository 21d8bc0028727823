#pragma once

#include "upload/UploadEnvironment.h"
#include "upload/preparation/PhotoPreparation.h"
#include "upload/preparation/VideoExport.h"
#include "upload/protocol/ScratchFolder.h"
#include "upload/protocol/SlicingUploadConfig.h"

#include <QObject>

#include <memory>
#include <vector>

class UploadRun;
struct PhotoAsset;

//! Uploads from pages: lets the user pick photos or a clip and uploads them. One for the process,
//! owned by the application; several runs may be under way at once. Its end, and that of the user's
//! session, stops them, and nothing more is told.
class SlicingUpload : public QObject
{
    Q_OBJECT

public:
    explicit SlicingUpload(const UploadEnvironment &environment);
    ~SlicingUpload() override;

    //! Opens the picker as the page's configuration wants it; what is picked is uploaded. \a asker
    //! names the document that asks.
    void pushImagePickerControllerWithConfig(
        const SlicingUploadConfig &config, bool video, const QString &asker);
    //! The user has picked these.
    void didFinishPicking(const SlicingUploadConfig &config, const QList<PhotoAsset> &assets,
        const QString &asker = {});

Q_SIGNALS:
    //! A run has uploaded something: its results as the text of a JSON list. A run without any
    //! shows a toast instead. \a asker: who asked for the run.
    void onSlicingUpload(const QString &result, const QString &asker);

private:
    void cancel();
    void startRun(
        const SlicingUploadConfig &config, const QList<PhotoAsset> &assets, const QString &asker);
    void didEnd(const UploadRun &run, const QString &asker);
    void forget(UploadRun *run);

    UploadEnvironment m_environment;
    ScratchFolder m_scratch;
    PhotoPreparation m_photos;
    VideoExport m_videos;
    std::vector<std::unique_ptr<UploadRun>> m_runs;
};
