#include "launch/guide/UserGuideAuthorizationTipView.h"

#include "launch/notices/PrivacyConsent.h"
#include "net/catalogue/AgreementLink.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/storage/UserDefaults.h"
#include "ui/shell/Shell.h"

#include <QPointer>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

const QString acceptedKey = QStringLiteral("UserGuideAuthorizationTip");

}

UserGuideAuthorizationTipView::UserGuideAuthorizationTipView(const LaunchEnvironment &environment)
    : m_environment(environment)
{
    setTitle(u"用户协议和隐私政策"_s);
}

bool UserGuideAuthorizationTipView::isAccepted(const UserDefaults &defaults)
{
    return defaults.boolForKey(acceptedKey);
}

void UserGuideAuthorizationTipView::show()
{
    Navigator *navigator = m_environment.shell->navigator();
    const QString name = u"UserGuideAuthorizationTipScreen"_s;
    navigator->registerScreen(
        name, QUrl(u"qrc:/qt/qml/Vant/Launch/UserGuideAuthorizationTipScreen.qml"_s));
    navigator->present(name, this);
}

void UserGuideAuthorizationTipView::agree()
{
    m_environment.defaults->setBool(true, acceptedKey);
    m_environment.defaults->synchronize();
    m_environment.shell->navigator()->dismiss(this);
    Q_EMIT accepted();
}

void UserGuideAuthorizationTipView::refuse()
{
    m_environment.consent->refuse();
}

void UserGuideAuthorizationTipView::didSelectLink(const QString &name)
{
    const auto link = AgreementLink::named(name);
    if (m_agreementRequested || !link)
        return;
    m_agreementRequested = true;
    const auto answered = [self = QPointer(this), title = link->title](int, const QJsonValue &data,
                              const std::optional<ResponseErrorInfo> &error) {
        if (self)
            self->openAgreement(title, data, error ? error->errorDescription : QString());
    };
    if (link->agreement == AgreementLink::Agreement::User)
        m_environment.requests->requestAgreementUser(answered);
    else
        m_environment.requests->requestAgreementPrivacy(answered);
}

void UserGuideAuthorizationTipView::openAgreement(
    const QString &title, const QJsonValue &answer, const QString &error)
{
    m_agreementRequested = false;
    const QString address = AgreementLink::addressIn(answer);
    if (!address.isEmpty())
        m_environment.openOutLinkPage(address, title);
    else
        m_environment.shell->toast()->showError(
            error.isEmpty() ? AgreementLink::noAddressText() : error);
}
