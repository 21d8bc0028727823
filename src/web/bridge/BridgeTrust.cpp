#include "web/bridge/BridgeTrust.h"

QString BridgeTrust::originOf(QUrl url)
{
    const int usualPort = url.scheme() == u"https" ? 443 : 80;
    if (url.port() == usualPort)
        url.setPort(-1);
    return url
        .adjusted(
            QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo)
        .toString(QUrl::FullyEncoded);
}

BridgeTrust::BridgeTrust(const QStringList &trustedOrigins)
{
    for (const QString &origin : trustedOrigins)
        m_origins << originOf(QUrl(origin));
}

bool BridgeTrust::serves(const QString &origin, const QUrl &address) const
{
    if (m_origins.isEmpty())
        return true;
    const QString claimed = originOf(QUrl(origin));
    // A blob's address holds that of the page which made it.
    const QString seen = originOf(address.scheme() == u"blob" ? QUrl(address.path()) : address);
    return m_origins.contains(claimed) && claimed == seen;
}
