#pragma once

#include <QStringList>
#include <QUrl>

//! Which pages the bridge serves: those of the configured origins, or all where none is configured.
class BridgeTrust
{
public:
    explicit BridgeTrust(const QStringList &trustedOrigins);

    //! Both the page that the view shows and the origin that the document claims must be trusted.
    bool serves(const QUrl &page, const QString &claimedOrigin) const;

private:
    QStringList m_origins;
};
