#pragma once

#include "model/DeploymentConfiguration.h"
#include "platform/Device.h"
#include "session/SilentLogin.h"
#include "web/home/STHomeViewControllerDelegate.h"

#include <memory>

class Account;
class LaunchStage;
class NavigationController;
class Portal;
class SchoolLoginViewController;
class Shell;
class STHomeViewController;
struct SendAuthResp;

//! What the application delegate works with; nothing is owned, all must outlive it.
struct AppDelegateEnvironment
{
    Device device;
    Account *account;
    Shell *shell;
    Portal *portal;
    LaunchStage *launch;
    DeploymentConfiguration configuration;
    std::function<QSize()> windowPixels; //!< the window's size in pixels
    //! Asks the window system to show the window this way; null, or why it does not.
    std::function<QString(Qt::ScreenOrientation orientation)> requestGeometryUpdate;
    //! Make the controllers of the two flows, each once.
    std::function<std::unique_ptr<SchoolLoginViewController>()> makeLogin;
    std::function<std::unique_ptr<STHomeViewController>()> makeHome;
};

//! Decides at launch and ever after whether the window shows the login flow or the home container.
//! One for the process; the screens' controllers are made when they are first asked for.
class AppDelegate : public QObject, public STHomeViewControllerDelegate
{
    Q_OBJECT

public:
    explicit AppDelegate(const AppDelegateEnvironment &environment);
    ~AppDelegate() override;

    //! The launch: first install, routing, registration of the services, the notification that
    //! launched the program, if one did, guide and update check.
    bool didFinishLaunchingWithOptions(const std::optional<QVariantMap> &launchNotification);
    void applicationDidBecomeActive();
    //! A URL that another program handed to this one; whether it was understood.
    bool openURL(const QUrl &url);
    bool continueUserActivity(const QUrl &universalLink);

    STHomeViewController *homeNavViewController();
    //! Makes the home container's view hidden in advance, which holds up the main thread for a
    //! while.
    void prepareHome();
    NavigationController *loginViewController();
    SchoolLoginViewController *loginVC();

    void gotoLoginVC();
    void backGroundloginIn(std::function<void()> success);
    void backGroundloginInWithRefresh(bool refresh, std::function<void()> success) override;

    QString takeUrlStr() override;
    std::optional<QVariantMap> takePushDictionary() override;
    void keepNotification(const QVariantMap &userInfo) override;
    void bindGeTuiAgain() override;

    //! Landscape only, for a page that asks for it.
    void setLandscapeScreen(bool landscape);
    bool isLandscapeScreen() const { return m_landscapeScreen; }
    enum InterfaceOrientation { Portrait = 2, LandscapeRight = 8 };
    InterfaceOrientation supportedInterfaceOrientations() const;

    //! An address waiting to be opened when the home container next appears; nothing in the
    //! start-up fills it.
    QString urlStr;
    //! The last tapped notification that came before there was a home container, or while nobody
    //! was signed in: the same user's next login opens it.
    std::optional<QVariantMap> pushDictionary;

private:
    enum class Token { Needed, NotNeeded };
    enum class Version { Marked, NotMarked };

    void loginWhenTokenIsReadable();
    void observeIsLogin(Token token, Version version, std::function<void()> signedIn = {});
    void loginInBackground(bool refresh, UserCheck check, std::function<void()> success);
    void switchToHome(Version version);
    void switchToLogin();
    bool hasToken() const;
    bool hasStoredToken() const; //!< one that cannot be read yet, too
    void registerServices();
    void registerPush();
    void keepUntilSignedIn(const QVariant &userInfo);
    void onResp(const SendAuthResp &response);

    const Device m_device;
    Account *const m_account;
    Shell *const m_shell;
    Portal *const m_portal;
    const AppDelegateEnvironment m_environment;
    std::unique_ptr<SchoolLoginViewController> m_loginVC;
    std::unique_ptr<NavigationController> m_loginNavigationController;
    std::unique_ptr<STHomeViewController> m_homeViewController;
    bool m_homeHasLoaded = false;
    bool m_landscapeScreen = false;
};
