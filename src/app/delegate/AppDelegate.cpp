#include "app/delegate/AppDelegate.h"

#include "app/Logging.h"
#include "launch/LaunchStage.h"
#include "login/screen/SchoolLoginViewController.h"
#include "model/StringFormat.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/services/LocationManager.h"
#include "platform/services/WXApi.h"
#include "platform/time/MainQueue.h"
#include "platform/time/NotificationCenter.h"
#include "services/share/OMShareSDKTool.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"
#include "web/home/STHomeViewController.h"
#include "web/portal/Portal.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto switchDelay = 250ms;
constexpr auto keychainPatience = 10s;
constexpr auto launchNotificationDelay = 2s;
const QString tappedNotification = QStringLiteral("backGeTuiPushLoadNewWeb");

}

AppDelegate::AppDelegate(const AppDelegateEnvironment &environment)
    : m_device(environment.device)
    , m_account(environment.account)
    , m_shell(environment.shell)
    , m_portal(environment.portal)
    , m_environment(environment)
{
    connect(m_device.wxApi, &WXApi::onResp, this, &AppDelegate::onResp);
    m_device.notifications->addObserver(tappedNotification, this,
        [this](const QVariant &userInfo) { keepUntilSignedIn(userInfo); });
    connect(&m_account->session, &UserSession::begun, m_device.wxApi, &WXApi::cancelPendingRequest);
    connect(
        &m_account->session, &UserSession::ending, m_device.wxApi, &WXApi::cancelPendingRequest);
    connect(&m_account->session, &UserSession::ending, this, [this] { urlStr.clear(); });
    connect(
        &m_account->session, &UserSession::userChanging, this, [this] { pushDictionary.reset(); });
    connect(&m_portal->secondaryPages, &SecondaryPages::landscapeScreenWanted, this,
        &AppDelegate::setLandscapeScreen);
    connect(&m_portal->slicingUpload, &SlicingUpload::loginNeeded, this,
        [this](const SlicingUpload::LoggedIn &success) {
            backGroundloginInWithRefresh(false, success);
        });
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::didFinishLaunchingWithOptions(
    const std::optional<QVariantMap> &launchNotification)
{
    LoginModel *login = &m_account->loginModel;
    m_account->session.launch();
    m_account->pushBinding.regidFailedCount = 0;
    if (!login->isFirstInstall()) {
        login->setIsFirstInstall(true);
        login->setIsLoginOut(true);
    }
    if (login->isLogin() && hasStoredToken()) {
        m_shell->navigator()->setRootViewController(u""_s);
        loginWhenTokenIsReadable();
    } else {
        observeIsLogin(Token::Needed, Version::Marked);
    }
    registerServices();
    m_device.mainQueue->after(launchNotificationDelay, this, [this, launchNotification] {
        m_device.notifications->postNotificationName(
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
        if (self->m_account->loginModel.isLogin() && self->hasToken()) {
            self->m_account->session.resume();
            self->backGroundloginInWithRefresh(true, [] {});
        } else {
            self->observeIsLogin(Token::Needed, Version::Marked);
        }
    };
    if (!m_account->loginModel.isTokenAwaited())
        return once();
    m_device.mainQueue->after(keychainPatience, this, once);
    m_account->loginModel.whenTokenIsReadable(once);
}

void AppDelegate::registerServices()
{
    const DeploymentConfiguration &configuration = m_environment.configuration;
    m_device.locationManager->setEnableHTTPS(true);
    m_device.locationManager->setApiKey(configuration.location.mapKey);
    registerPush();
    OMShareSDKTool::registerShareSDK(m_portal->shareSDK, *m_device.wxApi, configuration);
}

// The push service learns of this device; before a first sign-in not without consent.
void AppDelegate::registerPush()
{
    PrivacyConsent *consent = m_environment.launch->consent();
    PushRegistration *push = &m_portal->pushRegistration;
    if (consent->isGiven() || (m_account->loginModel.isLogin() && hasStoredToken()))
        push->start();
    else
        connect(consent, &PrivacyConsent::given, push, &PushRegistration::start,
            Qt::SingleShotConnection);
}

void AppDelegate::applicationDidBecomeActive()
{
    m_device.badge->setNumber(0);
    m_portal->pushRegistration.resetBadge();
}

bool AppDelegate::openURL(const QUrl &url)
{
    return m_device.wxApi->handleOpenURL(url);
}

bool AppDelegate::continueUserActivity(const QUrl &universalLink)
{
    return m_device.wxApi->handleOpenUniversalLink(universalLink);
}

void AppDelegate::onResp(const SendAuthResp &response)
{
    m_device.notifications->postNotificationName(u"WechatAuthCode"_s,
        QVariantMap {{u"code"_s, response.code}, {u"state"_s, response.state}});
}

STHomeViewController *AppDelegate::homeNavViewController()
{
    if (!m_homeViewController)
        m_homeViewController = m_environment.makeHome();
    return m_homeViewController.get();
}

void AppDelegate::prepareHome()
{
    m_shell->navigator()->prepare(u"HomeScreen"_s, homeNavViewController());
}

SchoolLoginViewController *AppDelegate::loginVC()
{
    if (!m_loginVC)
        m_loginVC = m_environment.makeLogin();
    return m_loginVC.get();
}

NavigationController *AppDelegate::loginViewController()
{
    if (!m_loginNavigationController)
        m_loginNavigationController = std::make_unique<NavigationController>(
            m_shell->navigator(), loginVC()->screenName(), loginVC());
    return m_loginNavigationController.get();
}

// Every call adds an observer for the rest of the process, and every observer routes: deliberate.
void AppDelegate::observeIsLogin(Token token, Version version, std::function<void()> signedIn)
{
    m_account->loginModel.observeIsLogin(
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
    return !m_account->loginModel.login_token().isEmpty();
}

bool AppDelegate::hasStoredToken() const
{
    return hasToken() || m_account->loginModel.isTokenAwaited();
}

void AppDelegate::switchToHome(Version version)
{
    m_device.mainQueue->after(switchDelay, this, [this, version] {
        // Signed out again in the meantime: the login flow is there already.
        if (!m_account->loginModel.isLogin())
            return;
        m_shell->navigator()->setRootViewController(u"HomeScreen"_s, homeNavViewController());
        if (version == Version::Marked)
            m_account->loginModel.setIsNotBeforeVersion(true);
    });
    // The delay is there, so the view is made in it.
    m_device.mainQueue->after(0ms, this, [this] { prepareHome(); });
}

void AppDelegate::switchToLogin()
{
    m_shell->navigator()->setRootViewController(
        QString::fromLatin1(NavigationController::screenName), loginViewController());
}

void AppDelegate::gotoLoginVC()
{
    m_account->session.expire();
    observeIsLogin(Token::Needed, Version::NotMarked);
}

void AppDelegate::backGroundloginIn(std::function<void()> success)
{
    loginInBackground(true, UserCheck::No, std::move(success));
}

void AppDelegate::backGroundloginInWithRefresh(bool refresh, std::function<void()> success)
{
    loginInBackground(refresh, UserCheck::Yes, std::move(success));
}

void AppDelegate::loginInBackground(bool refresh, UserCheck check, std::function<void()> success)
{
    // The token outlives its session, and must not undo its end.
    if (!m_account->session.isActive())
        return;
    const auto refreshing = refresh ? LoginResult::Refresh::Yes : LoginResult::Refresh::No;
    m_account->silentLogin.start(refreshing, check,
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
                self->loginVC()->setMessage(refusalText());
                self->gotoLoginVC();
                return;
            case SilentLogin::Outcome::Cancelled:
                // Signed out while the window waited for it.
                if (!self->m_shell->navigator()->rootViewController())
                    self->gotoLoginVC();
                return;
            case SilentLogin::Outcome::SignedIn:
                break;
            }
            if (!refresh) {
                success();
                return;
            }
            self->m_account->loginModel.setIsLogin(true);
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
    const bool isTakenNow = m_homeHasLoaded && m_account->session.isActive();
    const QVariantMap notification = userInfo.toMap();
    // One without a page opens nothing, and must not take the place of one that does.
    if (!isTakenNow && !notification.value(u"payload"_s).toString().isEmpty())
        pushDictionary = notification;
}

void AppDelegate::keepNotification(const QVariantMap &userInfo)
{
    m_portal->pushRegistration.keep(userInfo);
}

void AppDelegate::bindGeTuiAgain()
{
    m_portal->pushRegistration.bindGeTuiAgain();
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
