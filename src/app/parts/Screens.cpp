#include "app/parts/Screens.h"

#include "launch/LaunchStage.h"
#include "login/region/LoginViewController.h"
#include "login/school/LoginViewController2.h"
#include "ui/shell/Shell.h"
#include "web/home/BridgeHandlers.h"
#include "web/home/STHomeViewController.h"
#include "web/portal/Portal.h"

using namespace Qt::StringLiterals;

Screens::Screens(const Device &device, Account *account, Shell *shell, Portal *portal,
    LaunchStage *launch, const DeploymentConfiguration &configuration)
    : m_device(device)
    , m_account(account)
    , m_shell(shell)
    , m_portal(portal)
    , m_launch(launch)
    , m_configuration(configuration)
{
    Navigator *navigator = shell->navigator();
    for (const QString &screen : {u"LoginScreen"_s, u"RegionLoginScreen"_s, u"ChooseSchoolScreen"_s,
             u"AuthLoginScreen"_s, u"ActivateScreen"_s, u"SetingAccountScreen"_s})
        navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Login/%1.qml"_s.arg(screen)));
    navigator->registerScreen(u"HomeScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
}

std::unique_ptr<SchoolLoginViewController> Screens::makeLogin()
{
    const LoginEnvironment environment {
        .device = m_device,
        .account = m_account,
        .shell = m_shell,
        .displayName = m_configuration.app.displayName,
        .isPatriarch = m_configuration.app.patriarch,
        .launchAdShowing = [launch = m_launch] { return launch->splashAd()->isShowing(); },
        .showJurisdictionNotice = [launch = m_launch] { launch->showJurisdictionNotice(); },
    };
    std::unique_ptr<SchoolLoginViewController> login;
    if (m_configuration.app.loginScreen == u"older")
        login = std::make_unique<LoginViewController>(environment);
    else
        login = std::make_unique<LoginViewController2>(environment);
    QObject::connect(login.get(), &LoginFormViewController::openOutLinkPage,
        &m_portal->secondaryPages, &SecondaryPages::openOutLinkPage);
    return login;
}

std::unique_ptr<STHomeViewController> Screens::makeHome(STHomeViewControllerDelegate *delegate)
{
    auto home = std::make_unique<STHomeViewController>(HomeEnvironment {
        .device = m_device,
        .account = m_account,
        .shell = m_shell,
        .portal = m_portal,
        .services = &m_portal->services,
        .delegate = delegate,
        .configuration = m_configuration,
    });
    BridgeHandlers::registerAll(home->bridge(), home.get());
    return home;
}
