#pragma once

#include "services/scan/ScanEnvironment.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QSoundEffect;
class WCQRCodeScanningVC;

//! A page's wish to scan a code: the question for the camera, the scanner, and the string that it
//! read. Owned by the application.
class CodeScan : public QObject
{
    Q_OBJECT

public:
    explicit CodeScan(const ScanEnvironment &environment);
    ~CodeScan() override;

    //! Opens the scanner over what is shown, where the camera may be used. The string comes at most
    //! once, and never is empty; what closes the scanner otherwise is told to nobody. While one
    //! scanner is open, or its permission is being asked for, further wishes are dropped.
    void scanQrCode(std::function<void(const QString &)> scanQrSuccessBlock);

private:
    void QRCodeScanVC(std::unique_ptr<WCQRCodeScanningVC> scanner);
    void askAndPresent(std::unique_ptr<WCQRCodeScanningVC> scanner);
    void present(std::unique_ptr<WCQRCodeScanningVC> scanner);
    void alert(const QString &message);
    void playSound();

    ScanEnvironment m_environment;
    std::unique_ptr<WCQRCodeScanningVC> m_waiting; // for the permission
    QPointer<WCQRCodeScanningVC> m_scanner;
    std::unique_ptr<QSoundEffect> m_sound;
};
