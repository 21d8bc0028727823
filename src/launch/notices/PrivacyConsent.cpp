#include "launch/notices/PrivacyConsent.h"

#include "platform/services/ShareSDK.h"
#include "platform/storage/UserDefaults.h"

namespace {

const QString consentKey = QStringLiteral("JurisdictionNotice");

}

PrivacyConsent::PrivacyConsent(
    UserDefaults *defaults, ShareSDK *shareSDK, std::function<void()> terminate)
    : m_defaults(defaults)
    , m_shareSDK(shareSDK)
    , m_terminate(std::move(terminate))
{
}

bool PrivacyConsent::isGiven() const
{
    return m_defaults->boolForKey(consentKey);
}

void PrivacyConsent::agree()
{
    m_shareSDK->uploadPrivacyPermissionStatus(true);
    m_defaults->setBool(true, consentKey);
    m_defaults->synchronize();
    Q_EMIT given();
}

void PrivacyConsent::refuse()
{
    m_terminate();
}
