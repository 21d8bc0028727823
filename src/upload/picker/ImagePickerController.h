#pragma once

#include "platform/media/PhotoAsset.h"
#include "ui/navigation/ViewController.h"
#include "upload/picker/AssetListModel.h"
#include "upload/picker/AssetSelection.h"
#include "upload/picker/CaptureFile.h"
#include "upload/picker/ImagePickerSettings.h"

#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class PhotoLibrary;
class QMediaDevices;
class Shell;

//! The image picker: the album as a grid, from which photos, or a clip, are chosen in an order,
//! with a preview, and a camera where the page allows one. Presented full screen over everything
//! and owned by the navigator from then on; it dismisses itself when it has been answered.
class ImagePickerController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(ImagePickerSettings settings READ settings CONSTANT)
    Q_PROPERTY(bool picksVideos READ picksVideos CONSTANT)
    Q_PROPERTY(AssetListModel *assets READ assets CONSTANT)
    Q_PROPERTY(AssetListModel *previewed READ previewed CONSTANT)
    Q_PROPERTY(AssetSelection *selection READ selection CONSTANT)
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY loadedChanged)
    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(int previewStart READ previewStart NOTIFY stageChanged)
    Q_PROPERTY(QString doneText READ doneText NOTIFY selectionChanged)

public:
    static constexpr auto screenName = "ImagePickerScreen";
    static constexpr auto screenSource = "qrc:/qt/qml/Vant/Upload/ImagePickerScreen.qml";

    enum class Stage { Grid, Preview, Capture };
    Q_ENUM(Stage)

    //! Called exactly once, after the picker's dismissal has begun: with the assets in the order of
    //! choosing, or with nothing when the user cancelled or another screen took the picker's place.
    using Answer = std::function<void(const std::optional<QList<PhotoAsset>> &picked)>;

    //! \a albumFolder: where the camera's pictures and clips go; the library lists it too. Empty:
    //! no camera.
    ImagePickerController(Shell *shell, PhotoLibrary *library, const QString &albumFolder,
        const ImagePickerSettings &settings, Answer answer);
    ~ImagePickerController() override;

    //! Opens a picker over what is shown. The name screenName is registered here.
    static ImagePickerController *present(Shell *shell, PhotoLibrary *library,
        const QString &albumFolder, const ImagePickerSettings &settings, Answer answer);

    void viewDidLoad() override;
    void viewDidAppear() override;
    bool handleBack() override;

    ImagePickerSettings settings() const { return m_settings; }
    bool picksVideos() const { return m_settings.media == ImagePickerSettings::Media::Videos; }
    AssetListModel *assets() { return &m_assets; }
    AssetListModel *previewed() { return &m_previewed; }
    AssetSelection *selection() { return &m_selection; }
    bool isLoaded() const { return m_loaded; }
    Stage stage() const { return m_stage; }
    //! Which of the previewed assets is seen first.
    int previewStart() const { return m_previewStart; }
    QString doneText() const;

    //! Chooses the asset, or no longer; why it cannot be chosen is shown as a toast.
    Q_INVOKABLE void toggle(const QString &filePath);
    Q_INVOKABLE void preview(const QString &filePath);
    Q_INVOKABLE void previewSelection();
    Q_INVOKABLE void openCamera();
    Q_INVOKABLE void done();
    Q_INVOKABLE void cancel();

    //! For the views: the file has no picture. One that has gone leaves the grid, one that is
    //! damaged stays.
    Q_INVOKABLE void imageFailed(const QString &filePath);
    Q_INVOKABLE void durationKnown(const QString &filePath, double milliseconds);
    //! Where the camera is to write; a picture or a clip that has been written there is to be told.
    Q_INVOKABLE QString captureLocation();
    Q_INVOKABLE void captured();
    Q_INVOKABLE void captureFailed(const QString &error);
    Q_INVOKABLE QUrl fileUrl(const QString &filePath) const;

Q_SIGNALS:
    void loadedChanged();
    void stageChanged();
    void selectionChanged();

private:
    void load();
    void show(const QList<PhotoAsset> &assets);
    void forget(const QString &filePath);
    void setStage(Stage stage);
    void lookForCamera();
    void watchCameras();
    void openPreview(const QList<PhotoAsset> &assets, int start);
    void finish(const std::optional<QList<PhotoAsset>> &picked);

    Shell *m_shell;
    PhotoLibrary *m_library;
    ImagePickerSettings m_settings;
    Answer m_answer;
    AssetSelection m_selection;
    AssetListModel m_assets;
    AssetListModel m_previewed;
    CaptureFile m_captureFile;
    std::unique_ptr<QMediaDevices> m_devices; // once a camera is of interest
    QString m_chosenWhenListed;
    bool m_loaded = false;
    Stage m_stage = Stage::Grid;
    int m_previewStart = 0;
};
