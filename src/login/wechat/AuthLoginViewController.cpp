#include "login/wechat/AuthLoginViewController.h"

#include "model/LoginModel.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

AuthLoginViewController::AuthLoginViewController(
    const LoginEnvironment &environment, const QJsonObject &params, const ChosenRegion &region)
    : LoginFormViewController(environment)
    , school(region.school)
    , city(region.city)
    , provinces(region.provinces)
{
    setTitle(u"账号绑定"_s);
    loginViewModel().authParams = params;
}

AuthLoginViewController *AuthLoginViewController::present(
    const LoginEnvironment &environment, const QJsonObject &params, const ChosenRegion &region)
{
    Navigator *navigator = environment.shell->navigator();
    auto *binding = new AuthLoginViewController(environment, params, region);
    auto *frame = new NavigationController(navigator, u"AuthLoginScreen"_s, binding);
    binding->setParent(frame);
    navigator->present(QString::fromLatin1(NavigationController::screenName), frame);
    return binding;
}

void AuthLoginViewController::viewDidLoad()
{
    // What is stored already says nothing of this screen: a login without a token leaves it so.
    connect(&environment().account->loginModel, &LoginModel::isLoginWritten, this,
        [this](bool isLogin) {
            if (isLogin)
                environment().shell->navigator()->dismiss(this);
        });
}

void AuthLoginViewController::loginCompleted()
{
    LoginModel *loginModel = &environment().account->loginModel;
    loginModel->setSchool(school);
    loginModel->setCity(city);
    loginModel->setProvinces(provinces);
}
