#include "login/school/LoginViewController2.h"

#include "login/pinyin/MandarinLatin.h"
#include "login/school/ChooseSchoolViewController.h"
#include "login/screen/AskedSchool.h"
#include "model/LoginModel.h"
#include "platform/time/MainQueue.h"
#include "session/Account.h"
#include "ui/shell/Shell.h"

#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto idleDelay = 500ms;

const QString forgottenPassword
    = u"账号和密码由学校统一管理，您可以通过以下方式找回：\n\n"
      "一、学生\n请联系班主任，核对姓名和学号后重置密码。\n\n"
      "二、教职工\n请联系学校的平台管理员，核对工号后重置密码。\n\n"
      "三、首次使用\n账号一般为学号或工号，初始密码请向班主任或平台管理员询问。\n\n"
      "为了保护您的账号安全，请不要向他人透露密码，登录后请尽快修改初始密码。"_s;

}

LoginViewController2::LoginViewController2(const LoginEnvironment &environment)
    : SchoolLoginViewController(environment)
    , m_logo(&loginViewModel(), environment.device.network, this)
{
    connect(&m_logo, &SchoolLogo::sourceChanged, this, &LoginViewController2::logoChanged);
}

LoginViewController2::~LoginViewController2() = default;

void LoginViewController2::viewDidLoad()
{
    SchoolLoginViewController::viewDidLoad();
    // The school chooser needs the pinyin rules, which take a while to load: meanwhile the user
    // looks at this screen.
    environment().device.mainQueue->after(
        idleDelay, this, [] { QThreadPool::globalInstance()->start(&MandarinLatin::prepare); });
}

void LoginViewController2::viewDidAppear()
{
    setUserInstructionsSelected(false);
}

void LoginViewController2::configLoginInfo()
{
    SchoolLoginViewController::configLoginInfo();
    if (!siteCode().isEmpty())
        m_logo.request(siteCode());
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
    LoginModel *loginModel = &environment().account->loginModel;
    loginModel->setIsLocal(row.isLocal);
    loginModel->setLocalUrl(row.url);
    loginModel->setLocalUrlQe(row.url_qe);
    setChosenSchool(row.aName, row.aSiteCode);
    setWechatLoginHidden(row.isLocal);
    m_logo.request(row.site_id);
}

void LoginViewController2::takeUp(const AskedSchool &school)
{
    SchoolLoginViewController::takeUp(school);
    m_logo.request(school.siteCode);
}

void LoginViewController2::forgetPwd()
{
    Alert notice;
    notice.title = u"忘记密码"_s;
    notice.message = forgottenPassword;
    notice.style = Alert::Style::FullScreen;
    environment().shell->alertView()->show(notice);
}

void LoginViewController2::loginCompleted()
{
    SchoolLoginViewController::loginCompleted();
    environment().account->loginModel.setSchool(schoolText());
}
