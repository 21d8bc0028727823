#pragma once

#include <QVariantMap>

class QNetworkCookie;

//! A cookie as a dictionary of its standard properties, for keeping it and making it again.
namespace CookieProperties {

//! "Name", "Value", "Domain" (a leading dot: subdomains too), "Path", "Secure", "HttpOnly" and, for
//! a persistent cookie, "Expires" in milliseconds since the epoch.
QVariantMap of(const QNetworkCookie &cookie);
QNetworkCookie cookie(const QVariantMap &properties);

}
