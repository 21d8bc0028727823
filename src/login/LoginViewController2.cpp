#include "login/LoginViewController2.h"

#include "login/AuthLoginViewController.h"
#include "login/ChooseSchoolViewController.h"
#include "login/MandarinLatin.h"
#include "model/LoginModel.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/WXApi.h"
#include "ui/Shell.h"

#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto idleDelay = 500ms;

const QString noSchool = u"选择学校"_s;
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
    : LoginFormViewController(environment)
    , m_logo(&loginViewModel(), environment.network, this)
{
    setTitle(environment.displayName);
    connect(&m_logo, &SchoolLogo::sourceChanged, this, &LoginViewController2::logoChanged);
}

LoginViewController2::~LoginViewController2() = default;

void LoginViewController2::viewDidLoad()
{
    configLoginInfo();
    environment().notifications->addObserver(u"WechatAuthCode"_s, this,
        [this](const QVariant &object) { wechatAuthCodeCallback(object); });
    environment().notifications->addObserver(
        u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &) { xhLaunchAdShowFinish(); });
    // The school chooser needs the pinyin rules, which take a while to load: meanwhile the user
    // looks at this screen.
    environment().mainQueue->after(
        idleDelay, this, [] { QThreadPool::globalInstance()->start(&MandarinLatin::prepare); });
}

void LoginViewController2::viewDidAppear()
{
    setUserInstructionsSelected(false);
}

void LoginViewController2::configLoginInfo()
{
    const LoginModel &loginModel = *environment().loginModel;
    m_school = loginModel.school();
    m_wechatLoginHidden = loginModel.isHiddenWechatLogin();
    m_siteCode = loginModel.siteCode();
    loginViewModel().setOrganization(m_siteCode);
    Q_EMIT schoolChanged();
    if (!m_siteCode.isEmpty())
        m_logo.request(m_siteCode);
}

void LoginViewController2::setMessage(const QString &message)
{
    m_message = message;
    const auto &launchAdShowing = environment().launchAdShowing;
    if (!launchAdShowing || !launchAdShowing())
        xhLaunchAdShowFinish();
}

void LoginViewController2::xhLaunchAdShowFinish()
{
    if (!m_message.isEmpty())
        environment().shell->toast()->showError(std::exchange(m_message, QString()));
}

QString LoginViewController2::schoolText() const
{
    return isSchoolChosen() ? m_school : noSchool;
}

void LoginViewController2::chooseSchool()
{
    if (m_chooser)
        return;
    m_chooser = ChooseSchoolViewController::present(
        environment(), [self = QPointer(this)](const DataModel &row) {
            if (self)
                self->didChooseSchool(row);
        });
}

void LoginViewController2::didChooseSchool(const DataModel &row)
{
    m_school = row.aName;
    m_siteCode = row.aSiteCode;
    LoginModel *loginModel = environment().loginModel;
    loginModel->setIsLocal(row.isLocal);
    loginModel->setLocalUrl(row.url);
    loginModel->setLocalUrlQe(row.url_qe);
    m_wechatLoginHidden = row.isLocal;
    loginViewModel().setOrganization(m_siteCode);
    Q_EMIT schoolChanged();
    m_logo.request(row.site_id);
}

void LoginViewController2::forgetPwd()
{
    Alert notice;
    notice.title = u"忘记密码"_s;
    notice.message = forgottenPassword;
    notice.style = Alert::Style::FullScreen;
    environment().shell->alertView()->show(notice);
}

QString LoginViewController2::missingBeforeAccount()
{
    if (m_siteCode.isEmpty())
        return u"请选择学校"_s;
    loginViewModel().setOrganization(m_siteCode);
    return {};
}

void LoginViewController2::loginCompleted()
{
    LoginModel *loginModel = environment().loginModel;
    loginModel->setSchool(schoolText());
    loginModel->setIsHiddenWechatLogin(loginModel->isLocal());
}

void LoginViewController2::wechatLogin()
{
    if (m_siteCode.isEmpty() || !isSchoolChosen())
        return showError(u"请先选择学校"_s);
    if (!checkAgreed())
        return;
    loginViewModel().setOrganization(m_siteCode);
    loginViewModel().school = m_school;
    if (!environment().wxApi->sendAuthReq(wechatScope, wechatState))
        showError(u"微信登录暂不可用"_s);
}

void LoginViewController2::wechatAuthCodeCallback(const QVariant &object)
{
    const QVariantMap answer = object.toMap();
    const QString code = answer.value(u"code"_s).toString();
    const QString state = answer.value(u"state"_s).toString();
    if (state == pageWechatState)
        return;
    if (state != wechatState || code.isEmpty())
        return showError(u"授权失败"_s);
    // An answer may start the program, and the school was chosen in a run before.
    if (m_siteCode.isEmpty() || !isSchoolChosen())
        return showError(u"请先选择学校"_s);

    loginViewModel().authCode = code;
    CommandObserver observer;
    observer.next = [this](const QJsonValue &identity) { jumpToAuthVC(identity.toObject()); };
    observer.error = [this](const CommandError &error) { showError(error.msg); };
    loginViewModel().wechatLoginCommand(patriarchLogin(), observer);
}

void LoginViewController2::jumpToAuthVC(const QJsonObject &identity)
{
    if (m_binding)
        return;
    m_binding = AuthLoginViewController::present(environment(), identity);
    m_binding->school = schoolText();
    m_binding->city = loginViewModel().city;
    m_binding->provinces = loginViewModel().provinces;
    connect(m_binding, &LoginFormViewController::openOutLinkPage, this,
        &LoginFormViewController::openOutLinkPage);
}
