#include "session/SsoCookies.h"

#include "model/SecretSettings.h"
#include "platform/storage/CookieProperties.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/UserDefaults.h"

namespace {

const QList<QByteArray> sessionCookieNames {"mo", "tmo"};

bool isSessionCookie(const QNetworkCookie &cookie)
{
    return sessionCookieNames.contains(cookie.name());
}

}

SsoCookies::SsoCookies(HTTPCookieStorage *storage, UserDefaults *defaults)
    : m_storage(storage)
    , m_defaults(defaults)
{
}

void SsoCookies::handleCookie()
{
    QVariantList saved;
    for (const QNetworkCookie &cookie : m_storage->cookies()) {
        if (isSessionCookie(cookie))
            saved << CookieProperties::of(cookie);
    }
    m_defaults->setObject(saved, SecretSettings::savedCookies);
    m_defaults->synchronize();
}

void SsoCookies::configCookies()
{
    if (m_storage->holdsCookieNamed(sessionCookieNames))
        return;
    for (const QVariant &properties :
        m_defaults->objectForKey(SecretSettings::savedCookies).toList()) {
        const QNetworkCookie cookie = CookieProperties::cookie(properties.toMap());
        if (isSessionCookie(cookie))
            m_storage->setCookie(cookie);
    }
}

void SsoCookies::clearCookies()
{
    m_defaults->removeObjectForKey(SecretSettings::savedCookies);
    m_defaults->synchronize();
    for (const QNetworkCookie &cookie : m_storage->cookies()) {
        if (isSessionCookie(cookie))
            m_storage->removeCookie(cookie);
    }
}
