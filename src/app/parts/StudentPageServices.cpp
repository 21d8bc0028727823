#include "app/parts/StudentPageServices.h"

#include "web/secondary/SecondaryPages.h"

StudentPageServices::StudentPageServices(const ScanEnvironment &scan,
    LocationManager *locationManager, ShareSDK *shareSDK, QNetworkAccessManager *network,
    SecondaryPages *pages)
    : m_codeScan(scan)
    , m_location(locationManager)
    , m_share(scan.shell, shareSDK, network)
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
