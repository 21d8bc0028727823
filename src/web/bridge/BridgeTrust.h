#pragma once

#include <QStringList>
#include <QUrl>

//! Which pages the bridge serves: those of the configured origins, or all where none is configured.
class BridgeTrust
{
public:
    explicit BridgeTrust(const QStringList &trustedOrigins);

    //! Scheme, host and port, without the one that goes without saying.
    static QString originOf(QUrl url);

    //! \a origin: what the document says of itself, "null" where it has none. \a address: what the
    //! engine says that it shows.
    bool serves(const QString &origin, const QUrl &address) const;

private:
    QStringList m_origins;
};
