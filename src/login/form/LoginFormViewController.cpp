#include "login/form/LoginFormViewController.h"

#include "login/Logging.h"
#include "model/LoginModel.h"
#include "net/catalogue/RequestInterface.h"
#include "platform/desktop/NetworkReachabilityManager.h"
#include "platform/http/ServerAddress.h"
#include "platform/time/MainQueue.h"
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
{
}

LoginFormViewController::~LoginFormViewController()
{
    // The login goes with its screen and tells nobody; the window must not wait for it.
    if (m_loginRunning)
        m_environment.shell->progressHUD()->hide();
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
    if (m_agreementRequested || (name != u"protocol" && name != u"privacy"))
        return;
    const bool isProtocol = name == u"protocol";
    const QString title = isProtocol ? u"用户协议"_s : u"隐私政策"_s;
    CommandObserver observer;
    observer.next = [this, title](const QJsonValue &answer) { showAgreement(title, answer); };
    observer.error = [this](const CommandError &error) {
        m_agreementRequested = false;
        showError(error.msg);
    };
    m_agreementRequested = true;
    if (isProtocol)
        m_loginViewModel.requestAgreementUser(observer);
    else
        m_loginViewModel.requestAgreementPrivacy(observer);
}

void LoginFormViewController::showAgreement(const QString &title, const QJsonValue &answer)
{
    m_agreementRequested = false;
    const QString address = answer[u"url"].toString();
    if (address.isEmpty())
        showError(u"页面地址无效，请稍后再试"_s);
    else
        Q_EMIT openOutLinkPage(address, title);
}

LoginViewModel::PatriarchLogin LoginFormViewController::patriarchLogin() const
{
    return isPatriarch() ? LoginViewModel::PatriarchLogin::Yes : LoginViewModel::PatriarchLogin::No;
}

void LoginFormViewController::login()
{
    if (m_loginRunning)
        return;
    if (!m_environment.device.reachability->isReachable())
        return showError(u"没有网络连接..."_s);
    if (const QString missing = missingBeforeAccount(); !missing.isEmpty())
        return showError(missing);
    useSchool();
    if (tested(account()).isEmpty())
        return showError(u"请输入您的账号"_s);
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
    m_loginRunning = true;
    Q_EMIT endEditing();
    m_environment.shell->progressHUD()->show(u"登录中"_s);
}

void LoginFormViewController::endLogin()
{
    m_loginRunning = false;
    m_environment.shell->progressHUD()->hide();
}
