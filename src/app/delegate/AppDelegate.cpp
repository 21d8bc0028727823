#include "app/delegate/AppDelegate.h"

#include "app/Logging.h"
#include "launch/LaunchStage.h"
#include "login/screen/SchoolLoginViewController.h"
#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/services/LocationManager.h"
#include "platform/services/WXApi.h"
#include "platform/time/MainQueue.h"
#include "platform/time/NotificationCenter.h"
#include "services/share/OMShareSDKTool.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"
#include "web/home/STHomeViewController.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto switchDelay = 250ms;
constexpr auto keychainPatience = 10s;
constexpr auto launchNotificationDelay = 2s;
const QString tappedNotification = QStringLiteral("backGeTuiPushLoadNewWeb");

}

AppDelegate::AppDelegate(const AppDelegateEnvironment &environment, Controllers controllers)
    : m_environment(environment)
    , m_controllers(std::move(controllers))
{
    connect(m_environment.wxApi, &WXApi::onResp, this, &AppDelegate::onResp);
    m_environment.notifications->addObserver(tappedNotification, this,
        [this](const QVariant &userInfo) { keepUntilSignedIn(userInfo); });
    connect(m_environment.session, &UserSession::begun, m_environment.wxApi,
        &WXApi::cancelPendingRequest);
    connect(m_environment.session, &UserSession::ending, m_environment.wxApi,
        &WXApi::cancelPendingRequest);
    connect(m_environment.session, &UserSession::ending, this, [this] { urlStr.clear(); });
    connect(m_environment.session, &UserSession::userChanging, this,
        [this] { pushDictionary.reset(); });
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::didFinishLaunchingWithOptions(
    const std::optional<QVariantMap> &launchNotification)
{
    LoginModel *login = m_environment.loginModel;
    m_environment.session->launch();
    m_environment.pushBinding->regidFailedCount = 0;
    if (!login->isFirstInstall()) {
        login->setIsFirstInstall(true);
        login->setIsLoginOut(true);
    }
    if (login->isLogin() && hasStoredToken()) {
        m_environment.shell->navigator()->setRootViewController(u""_s);
        loginWhenTokenIsReadable();
    } else {
        observeIsLogin(Token::Needed, Version::Marked);
    }
    registerServices();
    m_environment.mainQueue->after(launchNotificationDelay, this, [this, launchNotification] {
        m_environment.notifications->postNotificationName(
            tappedNotification, launchNotification ? QVariant(*launchNotification) : QVariant());
    });
    m_environment.launch->showUserGuide(m_environment.windowPixels());
    m_environment.launch->updateCheck()->checkAppUpdate();
    return true;
}

// A keychain that is late leads to the login screen; the token stays for the next launch.
void AppDelegate::loginWhenTokenIsReadable()
{
    const auto once = [self = QPointer(this), isDone = std::make_shared<bool>(false)] {
        if (!self || std::exchange(*isDone, true))
            return;
        if (self->m_environment.loginModel->isLogin() && self->hasToken()) {
            self->m_environment.session->resume();
            self->backGroundloginInWithRefresh(true, [] {});
        } else {
            self->observeIsLogin(Token::Needed, Version::Marked);
        }
    };
    if (!m_environment.loginModel->isTokenAwaited())
        return once();
    m_environment.mainQueue->after(keychainPatience, this, once);
    m_environment.loginModel->whenTokenIsReadable(once);
}

void AppDelegate::registerServices()
{
    const DeploymentConfiguration &configuration = m_environment.configuration;
    m_environment.locationManager->setEnableHTTPS(true);
    m_environment.locationManager->setApiKey(configuration.location.mapKey);
    registerPush();
    OMShareSDKTool::registerShareSDK(*m_environment.shareSDK, *m_environment.wxApi, configuration);
}

// The push service learns of this device; before a first sign-in not without consent.
void AppDelegate::registerPush()
{
    PrivacyConsent *consent = m_environment.launch->consent();
    PushRegistration *push = m_environment.pushRegistration;
    if (consent->isGiven() || (m_environment.loginModel->isLogin() && hasStoredToken()))
        push->start();
    else
        connect(consent, &PrivacyConsent::given, push, &PushRegistration::start,
            Qt::SingleShotConnection);
}

void AppDelegate::applicationDidBecomeActive()
{
    m_environment.badge->setNumber(0);
    m_environment.pushRegistration->resetBadge();
}

bool AppDelegate::openURL(const QUrl &url)
{
    return m_environment.wxApi->handleOpenURL(url);
}

bool AppDelegate::continueUserActivity(const QUrl &universalLink)
{
    return m_environment.wxApi->handleOpenUniversalLink(universalLink);
}

void AppDelegate::onResp(const SendAuthResp &response)
{
    m_environment.notifications->postNotificationName(u"WechatAuthCode"_s,
        QVariantMap {{u"code"_s, response.code}, {u"state"_s, response.state}});
}

STHomeViewController *AppDelegate::homeNavViewController()
{
    if (!m_homeViewController)
        m_homeViewController = m_controllers.makeHome();
    return m_homeViewController.get();
}

void AppDelegate::prepareHome()
{
    m_environment.shell->navigator()->prepare(u"HomeScreen"_s, homeNavViewController());
}

SchoolLoginViewController *AppDelegate::loginVC()
{
    if (!m_loginVC)
        m_loginVC = m_controllers.makeLogin();
    return m_loginVC.get();
}

NavigationController *AppDelegate::loginViewController()
{
    if (!m_loginNavigationController)
        m_loginNavigationController = std::make_unique<NavigationController>(
            m_environment.shell->navigator(), loginVC()->screenName(), loginVC());
    return m_loginNavigationController.get();
}

// Every call adds an observer for the rest of the process, and every observer routes: deliberate.
void AppDelegate::observeIsLogin(Token token, Version version, std::function<void()> signedIn)
{
    m_environment.loginModel->observeIsLogin(
        this, [this, token, version, signedIn = std::move(signedIn)](bool isLogin) mutable {
            if (!isLogin || (token == Token::Needed && !hasToken())) {
                switchToLogin();
                return;
            }
            switchToHome(version);
            if (const auto once = std::exchange(signedIn, {}))
                once();
        });
}

bool AppDelegate::hasToken() const
{
    return !m_environment.loginModel->login_token().isEmpty();
}

bool AppDelegate::hasStoredToken() const
{
    return hasToken() || m_environment.loginModel->isTokenAwaited();
}

void AppDelegate::switchToHome(Version version)
{
    m_environment.mainQueue->after(switchDelay, this, [this, version] {
        // Signed out again in the meantime: the login flow is there already.
        if (!m_environment.loginModel->isLogin())
            return;
        m_environment.shell->navigator()->setRootViewController(
            u"HomeScreen"_s, homeNavViewController());
        if (version == Version::Marked)
            m_environment.loginModel->setIsNotBeforeVersion(true);
    });
    // The delay is there, so the view is made in it.
    m_environment.mainQueue->after(0ms, this, [this] { prepareHome(); });
}

void AppDelegate::switchToLogin()
{
    m_environment.shell->navigator()->setRootViewController(
        QString::fromLatin1(NavigationController::screenName), loginViewController());
}

void AppDelegate::gotoLoginVC()
{
    m_environment.session->expire();
    observeIsLogin(Token::Needed, Version::NotMarked);
}

void AppDelegate::backGroundloginIn(std::function<void()> success)
{
    loginInBackground(true, SilentLogin::UserCheck::No, std::move(success));
}

void AppDelegate::backGroundloginInWithRefresh(bool refresh, std::function<void()> success)
{
    loginInBackground(refresh, SilentLogin::UserCheck::Yes, std::move(success));
}

void AppDelegate::loginInBackground(
    bool refresh, SilentLogin::UserCheck check, std::function<void()> success)
{
    // The token outlives its session, and must not undo its end.
    if (!m_environment.session->isActive())
        return;
    const auto refreshing = refresh ? LoginResult::Refresh::Yes : LoginResult::Refresh::No;
    m_environment.silentLogin->start(refreshing, check,
        [self = QPointer(this), refresh, success = std::move(success)](
            SilentLogin::Outcome outcome, const QString &errorDescription) {
            if (!self)
                return;
            switch (outcome) {
            case SilentLogin::Outcome::Failed:
                self->loginVC()->setMessage(errorDescription);
                self->gotoLoginVC();
                return;
            case SilentLogin::Outcome::Refused:
                self->loginVC()->setMessage(u"亲，您没有权限登录"_s);
                self->gotoLoginVC();
                return;
            case SilentLogin::Outcome::Cancelled:
                // Signed out while the window waited for it.
                if (!self->m_environment.shell->navigator()->rootViewController())
                    self->gotoLoginVC();
                return;
            case SilentLogin::Outcome::SignedIn:
                break;
            }
            if (!refresh) {
                success();
                return;
            }
            self->m_environment.loginModel->setIsLogin(true);
            self->observeIsLogin(Token::NotNeeded, Version::Marked, success);
        });
}

QString AppDelegate::takeUrlStr()
{
    return std::exchange(urlStr, QString());
}

std::optional<QVariantMap> AppDelegate::takePushDictionary()
{
    // From now on the home container hears of notifications itself.
    m_homeHasLoaded = true;
    return std::exchange(pushDictionary, std::nullopt);
}

void AppDelegate::keepUntilSignedIn(const QVariant &userInfo)
{
    const bool isTakenNow = m_homeHasLoaded && m_environment.session->isActive();
    const QVariantMap notification = userInfo.toMap();
    // One without a page opens nothing, and must not take the place of one that does.
    if (!isTakenNow && !notification.value(u"payload"_s).toString().isEmpty())
        pushDictionary = notification;
}

void AppDelegate::keepNotification(const QVariantMap &userInfo)
{
    m_environment.pushRegistration->keep(userInfo);
}

void AppDelegate::bindGeTuiAgain()
{
    m_environment.pushRegistration->bindGeTuiAgain();
}

void AppDelegate::setLandscapeScreen(bool landscape)
{
    m_landscapeScreen = landscape;
    const QString error = m_environment.requestGeometryUpdate(
        supportedInterfaceOrientations() == LandscapeRight ? Qt::LandscapeOrientation
                                                           : Qt::PortraitOrientation);
    if (!error.isNull())
        qCDebug(lcApp).noquote() << StringFormat::format(
            u"强制%@错误:%@"_s, landscape ? u"横屏"_s : u"竖屏"_s, error);
}

AppDelegate::InterfaceOrientation AppDelegate::supportedInterfaceOrientations() const
{
    return m_landscapeScreen ? LandscapeRight : Portrait;
}
