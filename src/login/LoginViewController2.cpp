#include "login/LoginViewController2.h"

#include "login/ChooseSchoolViewController.h"
#include "login/MandarinLatin.h"
#include "model/LoginModel.h"
#include "platform/MainQueue.h"
#include "platform/NetworkReachabilityManager.h"
#include "platform/NotificationCenter.h"
#include "platform/WXApi.h"
#include "ui/Shell.h"

#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto errorDelay = 500ms;
constexpr auto idleDelay = 500ms;

const QString noSchool = u"选择学校"_s;
const QString notAgreed = u"请勾选已阅读同意《用户协议》和《隐私政策》"_s;
const QString wechatScope = u"snsapi_userinfo"_s;
const QString wechatState = u"123"_s;
// Asked for by a page of the home container, which takes its own answer.
const QString pageWechatState = u"8888"_s;

const QString forgottenPassword
    = u"账号和密码由学校统一管理，您可以通过以下方式找回：\n\n"
      "一、学生\n请联系班主任，核对姓名和学号后重置密码。\n\n"
      "二、教职工\n请联系学校的平台管理员，核对工号后重置密码。\n\n"
      "三、首次使用\n账号一般为学号或工号，初始密码请向班主任或平台管理员询问。\n\n"
      "为了保护您的账号安全，请不要向他人透露密码，登录后请尽快修改初始密码。"_s;

}

LoginViewController2::LoginViewController2(const LoginEnvironment &environment)
    : m_environment(environment)
    , m_loginViewModel(environment)
    , m_logo(&m_loginViewModel, environment.network, this)
{
    setTitle(environment.displayName);
    connect(&m_logo, &SchoolLogo::sourceChanged, this, &LoginViewController2::logoChanged);
}

LoginViewController2::~LoginViewController2() = default;

void LoginViewController2::viewDidLoad()
{
    configLoginInfo();
    m_environment.notifications->addObserver(u"WechatAuthCode"_s, this,
        [this](const QVariant &object) { wechatAuthCodeCallback(object); });
    m_environment.notifications->addObserver(
        u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &) { xhLaunchAdShowFinish(); });
    // The school chooser needs the pinyin rules, which take a while to load: meanwhile the user
    // looks at this screen.
    m_environment.mainQueue->after(
        idleDelay, this, [] { QThreadPool::globalInstance()->start(&MandarinLatin::prepare); });
}

void LoginViewController2::viewDidAppear()
{
    setUserInstructionsSelected(false);
}

void LoginViewController2::configLoginInfo()
{
    const LoginModel &loginModel = *m_environment.loginModel;
    m_school = loginModel.school();
    m_wechatLoginHidden = loginModel.isHiddenWechatLogin();
    m_siteCode = loginModel.siteCode();
    m_loginViewModel.setOrganization(m_siteCode);
    Q_EMIT schoolChanged();
    if (!m_siteCode.isEmpty())
        m_logo.request(m_siteCode);
}

void LoginViewController2::setMessage(const QString &message)
{
    m_message = message;
    const auto &launchAdShowing = m_environment.launchAdShowing;
    if (!launchAdShowing || !launchAdShowing())
        xhLaunchAdShowFinish();
}

void LoginViewController2::xhLaunchAdShowFinish()
{
    if (!m_message.isEmpty())
        m_environment.shell->toast()->showError(std::exchange(m_message, QString()));
}

QString LoginViewController2::schoolText() const
{
    return isSchoolChosen() ? m_school : noSchool;
}

void LoginViewController2::setAccount(const QString &account)
{
    if (account == m_loginViewModel.userCode())
        return;
    m_loginViewModel.setUserCode(account);
    Q_EMIT fieldsChanged();
}

void LoginViewController2::setPassword(const QString &password)
{
    if (password == m_loginViewModel.userPassword())
        return;
    m_loginViewModel.setUserPassword(password);
    Q_EMIT fieldsChanged();
}

void LoginViewController2::checkUserInstructions()
{
    setUserInstructionsSelected(!m_userInstructionsSelected);
}

void LoginViewController2::setUserInstructionsSelected(bool selected)
{
    m_userInstructionsSelected = selected;
    Q_EMIT userInstructionsChanged();
}

void LoginViewController2::chooseSchool()
{
    if (m_chooser)
        return;
    m_chooser = ChooseSchoolViewController::present(
        m_environment, [self = QPointer(this)](const DataModel &row) {
            if (self)
                self->didChooseSchool(row);
        });
}

void LoginViewController2::didChooseSchool(const DataModel &row)
{
    m_school = row.aName;
    m_siteCode = row.aSiteCode;
    LoginModel *loginModel = m_environment.loginModel;
    loginModel->setIsLocal(row.isLocal);
    loginModel->setLocalUrl(row.url);
    loginModel->setLocalUrlQe(row.url_qe);
    m_wechatLoginHidden = row.isLocal;
    m_loginViewModel.setOrganization(m_siteCode);
    Q_EMIT schoolChanged();
    m_logo.request(row.site_id);
}

void LoginViewController2::didSelectLink(const QString &name)
{
    if (m_agreementRequested || (name != u"protocol" && name != u"privacy"))
        return;
    const bool isProtocol = name == u"protocol";
    const QString title = isProtocol ? u"用户协议"_s : u"隐私政策"_s;
    CommandObserver observer;
    observer.next = [this, title](const QJsonValue &answer) { showAgreement(title, answer); };
    observer.error = [this](const CommandError &error) {
        m_agreementRequested = false;
        m_environment.shell->toast()->showError(error.msg);
    };
    m_agreementRequested = true;
    if (isProtocol)
        m_loginViewModel.requestAgreementUser(observer);
    else
        m_loginViewModel.requestAgreementPrivacy(observer);
}

void LoginViewController2::showAgreement(const QString &title, const QJsonValue &answer)
{
    m_agreementRequested = false;
    const QString address = answer[u"url"].toString();
    if (address.isEmpty())
        m_environment.shell->toast()->showError(u"页面地址无效，请稍后再试"_s);
    else
        Q_EMIT openOutLinkPage(address, title);
}

void LoginViewController2::forgetPwd()
{
    Alert notice;
    notice.title = u"忘记密码"_s;
    notice.message = forgottenPassword;
    notice.style = Alert::Style::FullScreen;
    m_environment.shell->alertView()->show(notice);
}

LoginViewModel::PatriarchLogin LoginViewController2::patriarchLogin() const
{
    return isPatriarch() ? LoginViewModel::PatriarchLogin::Yes : LoginViewModel::PatriarchLogin::No;
}

void LoginViewController2::login()
{
    if (m_loginRunning)
        return;
    Toast *toast = m_environment.shell->toast();
    if (!m_environment.reachability->isReachable())
        return toast->showError(u"没有网络连接..."_s);
    if (m_siteCode.isEmpty())
        return toast->showError(u"请选择学校"_s);
    m_loginViewModel.setOrganization(m_siteCode);
    if (account().isEmpty())
        return toast->showError(u"请输入您的账号"_s);
    if (password().isEmpty())
        return toast->showError(u"请输入您的密码"_s);
    if (!m_userInstructionsSelected)
        return toast->showError(notAgreed);

    m_loginRunning = true;
    Q_EMIT endEditing();
    m_environment.shell->progressHUD()->show(u"登录中"_s);
    CommandObserver observer;
    observer.error = [this](const CommandError &error) { loginFailed(error); };
    observer.completed = [this] { loginCompleted(); };
    m_loginViewModel.loginCommand(patriarchLogin(), observer);
}

void LoginViewController2::loginFailed(const CommandError &error)
{
    m_environment.mainQueue->after(errorDelay, this, [this, error] {
        m_loginRunning = false;
        m_environment.shell->progressHUD()->hide();
        m_environment.shell->toast()->showError(error.msg);
    });
}

void LoginViewController2::loginCompleted()
{
    LoginModel *loginModel = m_environment.loginModel;
    loginModel->setUserName(account());
    loginModel->setPassword(password());
    loginModel->setSchool(schoolText());
    loginModel->setIsHiddenWechatLogin(loginModel->isLocal());
    setAccount(u""_s);
    setPassword(u""_s);
    m_environment.shell->progressHUD()->hide();
    m_loginRunning = false;
}

void LoginViewController2::wechatLogin()
{
    Toast *toast = m_environment.shell->toast();
    if (m_siteCode.isEmpty() || !isSchoolChosen())
        return toast->showError(u"请先选择学校"_s);
    if (!m_userInstructionsSelected)
        return toast->showError(notAgreed);
    m_loginViewModel.setOrganization(m_siteCode);
    m_loginViewModel.school = m_school;
    if (!m_environment.wxApi->sendAuthReq(wechatScope, wechatState))
        toast->showError(u"微信登录暂不可用"_s);
}

void LoginViewController2::wechatAuthCodeCallback(const QVariant &object)
{
    const QVariantMap answer = object.toMap();
    const QString code = answer.value(u"code"_s).toString();
    const QString state = answer.value(u"state"_s).toString();
    if (state == pageWechatState)
        return;
    if (state != wechatState || code.isEmpty())
        return m_environment.shell->toast()->showError(u"授权失败"_s);

    m_loginViewModel.authCode = code;
    CommandObserver observer;
    observer.next = [this](const QJsonValue &identity) {
        Q_EMIT jumpToAuthVC(identity.toObject(), schoolText());
    };
    observer.error
        = [this](const CommandError &error) { m_environment.shell->toast()->showError(error.msg); };
    m_loginViewModel.wechatLoginCommand(patriarchLogin(), observer);
}
