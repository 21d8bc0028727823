#pragma once

#include <QStringList>

//! Which pages the bridge serves: those of the configured origins, or all where none is configured.
class BridgeTrust
{
public:
    explicit BridgeTrust(const QStringList &trustedOrigins);

    //! \a origin: as a document's own location gives it.
    bool serves(const QString &origin) const;

private:
    QStringList m_origins;
};
