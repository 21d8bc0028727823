#pragma once

#include "web/PageServices.h"

class Toast;

//! Stands for the services that this build does not bring: tells the person so, and the page hears
//! nothing.
class UnavailablePageServices : public PageServices
{
public:
    explicit UnavailablePageServices(Toast *toast);

    void scanQrCode() override;
    void getLocation() override;
    void action(const QUrl &imageUrl) override;
    void linkShareAction(const QString &url, const QString &title, const QString &content,
        const QString &imageUrl) override;
    void jump2Outlink(const QString &url, const QString &title, const QString &color) override;
    void jump2OutlinkLandscape(const QString &url) override;

private:
    void tell(const QString &service);

    Toast *m_toast;
};
