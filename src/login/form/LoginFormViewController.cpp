#include "login/form/LoginFormViewController.h"

#include "login/Logging.h"
#include "login/form/LoginTexts.h"
#include "model/LoginModel.h"
#include "net/catalogue/AgreementLink.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/desktop/NetworkReachabilityManager.h"
#include "platform/time/MainQueue.h"
#include "platform/transport/ServerAddress.h"
#include "session/Account.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto errorDelay = 500ms;

}

LoginFormViewController::LoginFormViewController(const LoginEnvironment &environment)
    : m_environment(environment)
    , m_loginViewModel(environment)
    , m_runningLogin(environment.shell->progressHUD())
{
}

void LoginFormViewController::setAccount(const QString &account)
{
    if (account == m_loginViewModel.userCode())
        return;
    m_loginViewModel.setUserCode(account);
    Q_EMIT fieldsChanged();
}

void LoginFormViewController::setPassword(const QString &password)
{
    if (password == m_loginViewModel.userPassword())
        return;
    m_loginViewModel.setUserPassword(password);
    Q_EMIT fieldsChanged();
}

void LoginFormViewController::checkUserInstructions()
{
    setUserInstructionsSelected(!m_userInstructionsSelected);
}

void LoginFormViewController::setUserInstructionsSelected(bool selected)
{
    m_userInstructionsSelected = selected;
    Q_EMIT userInstructionsChanged();
}

QString LoginFormViewController::connectionWarning() const
{
    const RequestInterface &requests = m_environment.account->requests;
    const bool isOpen = !requests.getCurrentOrganization().isEmpty()
        && ServerAddress::isOpenToOthers(QUrl(requests.loginAddress()));
    return isOpen ? u"该学校的连接未加密，密码可能被他人看到"_s : QString();
}

void LoginFormViewController::serverChanged()
{
    if (!connectionWarning().isEmpty())
        qCWarning(lcLogin) << "passwords go unencrypted to"
                           << QUrl(m_environment.account->requests.loginAddress()).host();
    Q_EMIT connectionChanged();
}

bool LoginFormViewController::checkAgreed()
{
    if (!m_userInstructionsSelected)
        showError(u"请勾选已阅读同意《用户协议》和《隐私政策》"_s);
    return m_userInstructionsSelected;
}

void LoginFormViewController::showError(const QString &text)
{
    if (!text.isNull())
        m_environment.shell->toast()->showError(text);
}

void LoginFormViewController::didSelectLink(const QString &name)
{
    const auto link = AgreementLink::named(name);
    if (m_agreementRequested || !link)
        return;
    CommandObserver observer;
    observer.next
        = [this, title = link->title](const QJsonValue &answer) { showAgreement(title, answer); };
    observer.error = [this](const CommandError &error) {
        m_agreementRequested = false;
        showError(error.msg);
    };
    m_agreementRequested = true;
    if (link->agreement == AgreementLink::Agreement::User)
        m_loginViewModel.requestAgreementUser(observer);
    else
        m_loginViewModel.requestAgreementPrivacy(observer);
}

void LoginFormViewController::showAgreement(const QString &title, const QJsonValue &answer)
{
    m_agreementRequested = false;
    const QString address = AgreementLink::addressIn(answer);
    if (address.isEmpty())
        showError(AgreementLink::noAddressText());
    else
        Q_EMIT openOutLinkPage(address, title);
}

LoginViewModel::PatriarchLogin LoginFormViewController::patriarchLogin() const
{
    return isPatriarch() ? LoginViewModel::PatriarchLogin::Yes : LoginViewModel::PatriarchLogin::No;
}

void LoginFormViewController::login()
{
    if (isLoginRunning())
        return;
    if (!m_environment.device.reachability->isReachable())
        return showError(NetworkReachabilityManager::unreachableText());
    if (const QString missing = missingBeforeAccount(); !missing.isEmpty())
        return showError(missing);
    useSchool();
    if (tested(account()).isEmpty())
        return showError(LoginTexts::accountMissing);
    if (tested(password()).isEmpty())
        return showError(u"请输入您的密码"_s);
    if (!checkAgreed())
        return;

    beginLogin();
    CommandObserver observer;
    observer.error = [this](const CommandError &error) {
        m_environment.device.mainQueue->after(errorDelay, this, [this, error] {
            endLogin();
            showError(error.msg);
        });
    };
    observer.completed = [this] {
        LoginModel *loginModel = &m_environment.account->loginModel;
        loginModel->setUserName(account());
        loginModel->setPassword(password());
        loginCompleted();
        setAccount(u""_s);
        setPassword(u""_s);
        endLogin();
    };
    m_loginViewModel.loginCommand(patriarchLogin(), observer);
}

void LoginFormViewController::beginLogin()
{
    Q_EMIT endEditing();
    m_runningLogin.begin(LoginTexts::signingIn);
}
