#pragma once

#include "platform/Device.h"
#include "upload/preparation/PhotoPreparation.h"
#include "upload/preparation/VideoExport.h"
#include "upload/protocol/ScratchFolder.h"
#include "upload/protocol/SlicingUploadConfig.h"

#include <QObject>

#include <memory>
#include <vector>

class Shell;
class UploadRun;
class UserSession;
struct PhotoAsset;

//! Uploads from pages: lets the user pick photos or a clip and uploads them. One for the process;
//! several runs may be under way at once. Its end, and that of the user's session, stops them, and
//! nothing more is told.
class SlicingUpload : public QObject
{
    Q_OBJECT

public:
    using LoggedIn = std::function<void()>;

    SlicingUpload(const Device &device, UserSession *session, Shell *shell);
    ~SlicingUpload() override;

    //! Opens the picker as the page's configuration wants it; what is picked is uploaded. \a asker
    //! names the document that asks.
    void pushImagePickerControllerWithConfig(
        const SlicingUploadConfig &config, bool video, const QString &asker);
    //! The user has picked these.
    void didFinishPicking(const SlicingUploadConfig &config, const QList<PhotoAsset> &assets,
        const QString &asker = {});

Q_SIGNALS:
    //! Before a run: whoever hears it renews the login without a screen, and calls back only when
    //! that has worked.
    void loginNeeded(const LoggedIn &success);
    //! A run has uploaded something: its results as the text of a JSON list. A run without any
    //! shows a toast instead. \a asker: who asked for the run.
    void onSlicingUpload(const QString &result, const QString &asker);

private:
    void cancel();
    void startRun(
        const SlicingUploadConfig &config, const QList<PhotoAsset> &assets, const QString &asker);
    void didEnd(const UploadRun &run, const QString &asker);
    void forget(UploadRun *run);

    Device m_device;
    UserSession *m_session;
    Shell *m_shell;
    ScratchFolder m_scratch;
    PhotoPreparation m_photos;
    VideoExport m_videos;
    std::vector<std::unique_ptr<UploadRun>> m_runs;
};
