#include "platform/storage/CookieProperties.h"

#include <QDateTime>
#include <QNetworkCookie>

namespace {

const QString nameKey = QStringLiteral("Name");
const QString valueKey = QStringLiteral("Value");
const QString domainKey = QStringLiteral("Domain");
const QString pathKey = QStringLiteral("Path");
const QString secureKey = QStringLiteral("Secure");
const QString httpOnlyKey = QStringLiteral("HttpOnly");
const QString sameSiteKey = QStringLiteral("SameSite");
const QString expiresKey = QStringLiteral("Expires");

}

QVariantMap CookieProperties::of(const QNetworkCookie &cookie)
{
    QVariantMap properties {
        {nameKey, QString::fromUtf8(cookie.name())},
        {valueKey, QString::fromUtf8(cookie.value())},
        {domainKey, cookie.domain()},
        {pathKey, cookie.path()},
        {secureKey, cookie.isSecure()},
        {httpOnlyKey, cookie.isHttpOnly()},
        {sameSiteKey, int(cookie.sameSitePolicy())},
    };
    if (!cookie.isSessionCookie())
        properties.insert(expiresKey, cookie.expirationDate().toMSecsSinceEpoch());
    return properties;
}

QNetworkCookie CookieProperties::cookie(const QVariantMap &properties)
{
    QNetworkCookie cookie(properties.value(nameKey).toString().toUtf8(),
        properties.value(valueKey).toString().toUtf8());
    cookie.setDomain(properties.value(domainKey).toString());
    cookie.setPath(properties.value(pathKey).toString());
    cookie.setSecure(properties.value(secureKey).toBool());
    cookie.setHttpOnly(properties.value(httpOnlyKey).toBool());
    cookie.setSameSitePolicy(QNetworkCookie::SameSite(properties.value(sameSiteKey).toInt()));
    if (properties.contains(expiresKey))
        cookie.setExpirationDate(
            QDateTime::fromMSecsSinceEpoch(properties.value(expiresKey).toLongLong(), Qt::UTC));
    return cookie;
}
