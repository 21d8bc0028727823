#include "net/shared/OMShareGlobalInfo.h"

#include "platform/storage/UserDefaults.h"

namespace {

const QString defaultsKey = QStringLiteral("k_HttpCookieParam");
const QString ssoCookieKey = QStringLiteral("SSO_COOKIE");
const QString sessionIdCookieNameKey = QStringLiteral("_SESSIONID_COOKIE_NAME");
const QString ckClientIdKey = QStringLiteral("ck_ClientId");

}

OMShareGlobalInfo::OMShareGlobalInfo(UserDefaults *defaults)
    : m_defaults(defaults)
{
}

void OMShareGlobalInfo::loadHttpCookieParam()
{
    const QVariantMap stored = m_defaults->objectForKey(defaultsKey).toMap();
    httpCookieParam = {stored.value(ssoCookieKey).toString(),
        stored.value(sessionIdCookieNameKey).toString(), stored.value(ckClientIdKey).toString()};
}

void OMShareGlobalInfo::saveHttpCookieParam() const
{
    m_defaults->setObject(dicHttpCookieParam(), defaultsKey);
    m_defaults->synchronize();
}

QVariantMap OMShareGlobalInfo::dicHttpCookieParam() const
{
    QVariantMap dictionary;
    const auto put = [&](const QString &key, const QString &value) {
        if (!value.isNull())
            dictionary.insert(key, value);
    };
    put(ssoCookieKey, httpCookieParam.ssoCookie);
    put(sessionIdCookieNameKey, httpCookieParam.sessionIdCookieName);
    put(ckClientIdKey, httpCookieParam.ckClientId);
    return dictionary;
}
