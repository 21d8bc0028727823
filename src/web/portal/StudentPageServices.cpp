#include "web/portal/StudentPageServices.h"

#include "platform/Device.h"
#include "upload/picker/ImagePickerController.h"
#include "web/secondary/SecondaryPages.h"

namespace {

ScanEnvironment scanEnvironment(const Device &device, Shell *shell)
{
    const auto chooseFromAlbum
        = [shell, album = device.photoLibrary](const ScanEnvironment::AlbumAnswer &answer) {
              ImagePickerController::present(
                  shell, album, {}, {}, [answer](const std::optional<QList<PhotoAsset>> &picked) {
                      answer(picked && !picked->isEmpty() ? std::optional(picked->first().filePath)
                                                          : std::nullopt);
                  });
          };
    return {.shell = shell, .camera = device.camera, .chooseFromAlbum = chooseFromAlbum};
}

}

StudentPageServices::StudentPageServices(
    const Device &device, Shell *shell, ShareSDK *shareSDK, SecondaryPages *pages)
    : m_codeScan(scanEnvironment(device, shell))
    , m_location(device.locationManager)
    , m_share(shell, shareSDK, device.network)
    , m_pages(pages)
{
}

void StudentPageServices::scanQrCode(Answer onQrResult)
{
    m_codeScan.scanQrCode(std::move(onQrResult));
}

void StudentPageServices::initLocation()
{
    m_location.initLocation();
}

void StudentPageServices::getLocation(Answer onGetBDLocation)
{
    m_location.getLocation(std::move(onGetBDLocation));
}

void StudentPageServices::action(const QUrl &imageUrl)
{
    m_share.action(imageUrl);
}

void StudentPageServices::linkShareAction(
    const QString &url, const QString &title, const QString &content, const QString &imageUrl)
{
    m_share.linkShareAction(url, title, content, imageUrl);
}

void StudentPageServices::jump2Outlink(
    const QString &url, const QString &title, const QString &color)
{
    m_pages->jump2Outlink(url, title, color);
}

void StudentPageServices::jump2OutlinkLandscape(const QString &url)
{
    m_pages->jump2OutlinkLandscape(url);
}
