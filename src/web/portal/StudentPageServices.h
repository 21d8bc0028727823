#pragma once

#include "services/LocationForPages.h"
#include "services/scan/CodeScan.h"
#include "services/share/ShareForPages.h"
#include "web/portal/PageServices.h"

class SecondaryPages;
struct Device;

//! What the portal's pages ask for beyond their view, each handed to the one that does it. What it
//! is given must outlive it.
class StudentPageServices : public PageServices
{
public:
    StudentPageServices(
        const Device &device, Shell *shell, ShareSDK *shareSDK, SecondaryPages *pages);

    void scanQrCode(Answer onQrResult) override;
    void initLocation() override;
    void getLocation(Answer onGetBDLocation) override;
    void action(const QUrl &imageUrl) override;
    void linkShareAction(const QString &url, const QString &title, const QString &content,
        const QString &imageUrl) override;
    void jump2Outlink(const QString &url, const QString &title, const QString &color) override;
    void jump2OutlinkLandscape(const QString &url) override;

private:
    CodeScan m_codeScan;
    LocationForPages m_location;
    ShareForPages m_share;
    SecondaryPages *m_pages;
};
