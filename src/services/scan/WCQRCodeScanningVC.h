#pragma once

#include "services/scan/ScanEnvironment.h"
#include "services/scan/ScanManager.h"
#include "ui/navigation/ViewController.h"

#include <QPointer>
#include <QStringList>
#include <QVideoSink>

//! The scanner: what the camera sees, a frame with a moving line, a torch in the dark, and the way
//! to a photo of the album. The root of a navigation controller, which owns it.
//!
//! The first code that the camera reads closes the screen and is given to scanQrSuccessBlock; a
//! code from the album is shown in a ScanSuccessJumpVC and given to nobody.
class WCQRCodeScanningVC : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(bool scanning READ isScanning NOTIFY scanningChanged)
    Q_PROPERTY(bool flashlightBtnVisible READ isFlashlightBtnVisible NOTIFY flashlightChanged)
    Q_PROPERTY(bool isSelectedFlashlightBtn READ isSelectedFlashlightBtn NOTIFY flashlightChanged)
    Q_PROPERTY(QVideoSink *preview READ preview WRITE setPreview NOTIFY previewChanged)

public:
    static constexpr auto screenName = "WCQRCodeScanningScreen";
    static constexpr auto screenSource = "qrc:/qt/qml/Vant/Services/WCQRCodeScanningScreen.qml";
    //! A scene below it is dark.
    static constexpr double darkBrightness = -1.0;

    WCQRCodeScanningVC(const ScanEnvironment &environment, std::function<void()> playSound);
    ~WCQRCodeScanningVC() override;

    //! Takes the read string; called at most once, when the screen has begun to close.
    std::function<void(const QString &)> scanQrSuccessBlock;

    bool prefersNavigationBarHidden() const override { return true; }
    void viewDidAppear() override;
    bool handleBack() override;

    //! It is on its way out, or gone from the screen.
    bool isClosed() const { return m_closed; }

    //! The scan-line timer runs.
    bool isScanning() const { return m_scanning; }
    bool isFlashlightBtnVisible() const { return m_flashlight != Flashlight::NotOffered; }
    bool isSelectedFlashlightBtn() const { return m_flashlight == Flashlight::On; }
    //! Where the view wants the frames; none is well.
    QVideoSink *preview() const { return m_preview; }
    void setPreview(QVideoSink *preview);

    Q_INVOKABLE void backPressed();
    Q_INVOKABLE void albumPressed();
    Q_INVOKABLE void flashlightPressed();

Q_SIGNALS:
    void scanningChanged();
    void flashlightChanged();
    void previewChanged();

private:
    enum class Flashlight { NotOffered, Off, On };

    void resume();
    void pause();
    void setScanning(bool scanning);
    void setFlashlight(Flashlight flashlight);
    void didMeasureBrightness(double brightness);
    void didOutputMetadataObjects(const QStringList &codes);
    void readAlbumFile(const QString &filePath);
    void didReadAlbumFile(const QString &code);
    void showResult(const QString &code);
    void close();

    ScanEnvironment m_environment;
    std::function<void()> m_playSound;
    ScanManager m_manager;
    QPointer<QVideoSink> m_preview;
    bool m_scanning = false;
    bool m_albumInUse = false; // open, or its picture is being read
    bool m_closed = false;
    Flashlight m_flashlight = Flashlight::NotOffered;
};
