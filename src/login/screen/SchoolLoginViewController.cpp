#include "login/screen/SchoolLoginViewController.h"

#include "login/form/LoginTexts.h"
#include "login/screen/AskedSchool.h"
#include "login/wechat/AuthLoginViewController.h"
#include "model/LoginModel.h"
#include "platform/services/WXApi.h"
#include "platform/time/NotificationCenter.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

const QString noSchool = u"选择学校"_s;
const QString wechatScope = u"snsapi_userinfo"_s;

}

SchoolLoginViewController::SchoolLoginViewController(const LoginEnvironment &environment)
    : LoginFormViewController(environment)
{
    setTitle(environment.displayName);
}

SchoolLoginViewController::~SchoolLoginViewController() = default;

void SchoolLoginViewController::viewDidLoad()
{
    configLoginInfo();
    environment().device.notifications->addObserver(u"WechatAuthCode"_s, this,
        [this](const QVariant &object) { wechatAuthCodeCallback(object); });
    environment().device.notifications->addObserver(
        u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &) { xhLaunchAdShowFinish(); });
    if (environment().showJurisdictionNotice)
        environment().showJurisdictionNotice();
}

void SchoolLoginViewController::configLoginInfo()
{
    const LoginModel &loginModel = environment().account->loginModel;
    m_wechatLoginHidden = loginModel.isHiddenWechatLogin();
    setChosenSchool(loginModel.school(), loginModel.siteCode());
}

void SchoolLoginViewController::setChosenSchool(const QString &name, const QString &siteCode)
{
    m_school = name;
    m_siteCode = siteCode;
    loginViewModel().school = name;
    loginViewModel().setOrganization(siteCode);
    serverChanged();
    Q_EMIT schoolChanged();
}

void SchoolLoginViewController::setWechatLoginHidden(bool hidden)
{
    m_wechatLoginHidden = hidden;
    Q_EMIT schoolChanged();
}

void SchoolLoginViewController::setMessage(const QString &message)
{
    m_message = message;
    const auto &launchAdShowing = environment().launchAdShowing;
    if (!launchAdShowing || !launchAdShowing())
        xhLaunchAdShowFinish();
}

void SchoolLoginViewController::xhLaunchAdShowFinish()
{
    if (!m_message.isEmpty())
        environment().shell->toast()->showError(std::exchange(m_message, QString()));
}

QString SchoolLoginViewController::schoolText() const
{
    return isSchoolChosen() ? m_school : noSchool;
}

QString SchoolLoginViewController::missingBeforeAccount() const
{
    return m_siteCode.isEmpty() ? u"请选择学校"_s : QString();
}

void SchoolLoginViewController::useSchool()
{
    loginViewModel().setOrganization(m_siteCode);
}

void SchoolLoginViewController::loginCompleted()
{
    LoginModel *loginModel = &environment().account->loginModel;
    loginModel->setIsHiddenWechatLogin(loginModel->isLocal());
}

void SchoolLoginViewController::wechatLogin()
{
    if (m_siteCode.isEmpty() || !isSchoolChosen())
        return showError(LoginTexts::schoolFirst);
    if (!checkAgreed())
        return;
    loginViewModel().setOrganization(m_siteCode);
    // Before the browser opens: its answer may come to another process.
    chosenSchool().keep(environment().device.defaults);
    if (!environment().device.wxApi->sendAuthReq(wechatScope, WXAuthState::loginScreen))
        showError(u"微信登录暂不可用"_s);
}

void SchoolLoginViewController::wechatAuthCodeCallback(const QVariant &object)
{
    const QVariantMap answer = object.toMap();
    const QString code = answer.value(u"code"_s).toString();
    const QString state = answer.value(u"state"_s).toString();
    // Who has signed in another way meanwhile, or is about to, is left alone.
    if (state == WXAuthState::page || !isShown() || isLoginRunning())
        return;
    const auto asked = AskedSchool::take(environment().device.defaults);
    if (state != WXAuthState::loginScreen || code.isEmpty())
        return showError(u"授权失败"_s);
    if (asked && *asked != chosenSchool())
        takeUp(*asked);
    if (m_siteCode.isEmpty() || !isSchoolChosen())
        return showError(LoginTexts::schoolFirst);
    // The indicator keeps the school from being changed, too, until the platform has answered.
    beginLogin();
    loginViewModel().authCode = code;
    CommandObserver observer;
    observer.next = [this](const QJsonValue &identity) { jumpToAuthVC(identity.toObject()); };
    observer.error = [this](const CommandError &error) {
        endLogin();
        showError(error.msg);
    };
    observer.completed = [this] { endLogin(); };
    loginViewModel().wechatLoginCommand(patriarchLogin(), observer);
}

AskedSchool SchoolLoginViewController::chosenSchool()
{
    const LoginModel &loginModel = environment().account->loginModel;
    return {m_school, m_siteCode, loginViewModel().provinces, loginViewModel().city,
        loginModel.isLocal(), loginModel.localUrl(), loginModel.localUrlQe()};
}

void SchoolLoginViewController::takeUp(const AskedSchool &school)
{
    LoginModel *loginModel = &environment().account->loginModel;
    loginModel->setIsLocal(school.isLocal);
    loginModel->setLocalUrl(school.localUrl);
    loginModel->setLocalUrlQe(school.localUrlQe);
    loginViewModel().provinces = school.provinces;
    loginViewModel().city = school.city;
    setChosenSchool(school.name, school.siteCode);
    setWechatLoginHidden(school.isLocal);
}

bool SchoolLoginViewController::isShown() const
{
    const ViewController *root = environment().shell->navigator()->rootViewController();
    return !environment().account->session.isActive() && root && root == container();
}

void SchoolLoginViewController::jumpToAuthVC(const QJsonObject &identity)
{
    if (m_binding)
        return;
    m_binding = AuthLoginViewController::present(
        environment(), identity, {schoolText(), loginViewModel().provinces, loginViewModel().city});
    connect(m_binding, &LoginFormViewController::openOutLinkPage, this,
        &LoginFormViewController::openOutLinkPage);
}
