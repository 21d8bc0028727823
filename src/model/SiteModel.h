#pragma once

#include <QMetaType>
#include <QString>

//! The site part of a login answer ("siteInfo").
struct SiteModel
{
    Q_GADGET
    Q_PROPERTY(QString global_ctx MEMBER global_ctx)
    Q_PROPERTY(QString global_ctx_dt MEMBER global_ctx_dt)
    Q_PROPERTY(QString site_code MEMBER site_code)
    Q_PROPERTY(QString redirect_url MEMBER redirect_url)

public:
    QString global_ctx;
    QString global_ctx_dt;
    QString site_code;
    QString redirect_url; //!< the portal page to open after the login

    bool operator==(const SiteModel &) const = default;
};
