#include "app/DelegateClient.h"
#include "platform/desktop/WindowOrientation.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"
#include "ui/navigation/NavigationController.h"
#include "web/WebTestMain.h"

#include <QLoggingCategory>
#include <QSettings>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString loginRoot = QString::fromLatin1(NavigationController::screenName);
const QString homeRoot = QStringLiteral("HomeScreen");
const QString blankRoot = QStringLiteral("");

}

class AppDelegateTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;
    std::unique_ptr<DelegateClient> m_client;
    QList<QVariant> m_tapped;

    bool silentLoginEnds() const
    {
        return waitFor([this] { return !m_client->session.isWaiting(); });
    }

    bool remember(const QString &account = u"student01"_s)
    {
        const bool remembered = m_client->session.rememberLogin(account);
        m_client->loginModel().setIsLogin(true);
        return remembered;
    }

    void signIn()
    {
        m_client->loginModel().setLogin_token(u"t"_s);
        m_client->loginModel().setIsLogin(true);
    }

private Q_SLOTS:
    void init()
    {
        m_sandbox.reset();
        DeploymentConfiguration configuration;
        configuration.hosts = m_sandbox.hosts();
        m_client.reset();
        m_client = std::make_unique<DelegateClient>(configuration);
        m_tapped.clear();
        m_client->notifications.addObserver(u"backGeTuiPushLoadNewWeb"_s, this,
            [this](const QVariant &userInfo) { m_tapped << userInfo; });
    }

    void routesTheLaunch_data()
    {
        QTest::addColumn<bool>("isLogin");
        QTest::addColumn<QString>("token");
        QTest::addColumn<QString>("root");
        QTest::newRow("signed out, token") << false << u"t"_s << loginRoot;
        QTest::newRow("signed in, empty token") << true << u""_s << loginRoot;
        QTest::newRow("signed in, token") << true << u"t"_s << blankRoot;
    }

    void routesTheLaunch()
    {
        QFETCH(const bool, isLogin);
        QFETCH(const QString, token);
        QFETCH(const QString, root);
        m_client->loginModel().setIsLogin(isLogin);
        m_client->loginModel().setLogin_token(token);
        m_client->delegate.didFinishLaunchingWithOptions({});
        QCOMPARE(m_client->root(), root);
        // The update check, and the silent login where there is one.
        QCOMPARE(m_client->session.account.requestManager.connectItems().size(),
            root == blankRoot ? 2u : 1u);
        m_client->mainQueue.advance(1h);
        QCOMPARE(m_client->root(), root);
        QVERIFY2(m_client->loginModel().isFirstInstall() && m_client->loginModel().isLoginOut(),
            "the first launch is marked");
        m_client->loginModel().setIsLoginOut(false);
        m_client->delegate.didFinishLaunchingWithOptions({});
        QVERIFY(!m_client->loginModel().isLoginOut());
    }

    void aSealedTokenIsAwaited_data()
    {
        QTest::addColumn<std::chrono::milliseconds>("patience");
        QTest::addColumn<QString>("root");
        QTest::newRow("in time") << 9999ms << homeRoot;
        QTest::newRow("late") << 10'000ms << loginRoot;
    }

    void aSealedTokenIsAwaited()
    {
        QFETCH(const std::chrono::milliseconds, patience);
        QFETCH(const QString, root);
        QVERIFY(remember());
        const QString token = m_client->loginModel().login_token();
        const QString settings = m_client->session.folder.filePath(u"settings.ini"_s);
        TRY_VERIFY(QSettings(settings, QSettings::IniFormat).contains(u"loginTokenForST"_s));
        m_client->session.reopenDefaults();
        m_client->delegate.didFinishLaunchingWithOptions({});
        QCOMPARE(m_client->root(), blankRoot);
        QCOMPARE(m_client->session.account.requestManager.connectItems().size(), 1u);
        m_client->mainQueue.advance(patience);
        QCOMPARE(m_client->root(), root == homeRoot ? blankRoot : root);
        QVERIFY(m_client->loginModel().isTokenAwaited());

        TRY_COMPARE(m_client->loginModel().login_token(), token);
        QVERIFY(silentLoginEnds());
        m_client->mainQueue.advance(1h);
        QCOMPARE(m_client->root(), root);
        QVERIFY(m_client->loginModel().isLogin());
        // Who is signed in has consented, whether the token can be read yet or not.
        TRY_COMPARE(m_client->session.defaults.stringForKey(u"GTPushCid"_s), u"getCidFailed"_s);
    }

    void aLoginThatIsNotAcceptedLeadsToTheLoginScreen_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("answer"); // null: the platform's own
        QTest::addColumn<QString>("toast");
        QTest::newRow("an account that may not")
            << u"parent01"_s << QString() << u"亲，您没有权限登录"_s;
        QTest::newRow("no answer") << u"student01"_s << u"<html>"_s << u"请求错误"_s;
    }

    void aLoginThatIsNotAcceptedLeadsToTheLoginScreen()
    {
        QFETCH(const QString, account);
        QFETCH(const QString, answer);
        QVERIFY(remember(account));
        if (!answer.isNull())
            m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"body"_s, answer}});
        const QString token = m_client->loginModel().login_token();
        m_client->delegate.didFinishLaunchingWithOptions({});
        QVERIFY(silentLoginEnds());
        QCOMPARE(m_client->root(), loginRoot);
        QVERIFY(!m_client->loginModel().isLogin());
        QCOMPARE(m_client->loginModel().login_token(), token);
        QTEST(m_client->shell.toast()->text(), "toast");
        m_client->mainQueue.advance(1h);
        QCOMPARE(m_client->root(), loginRoot);
    }

    void aSignOutBeforeTheSwitchWinsAndTheHomeContainerStays()
    {
        m_client->delegate.didFinishLaunchingWithOptions({});
        signIn();
        m_client->mainQueue.advance(100ms);
        m_client->loginModel().logout();
        m_client->mainQueue.advance(1h);
        QCOMPARE(m_client->root(), loginRoot);

        signIn();
        m_client->mainQueue.advance(250ms);
        QCOMPARE(m_client->root(), homeRoot);
        const auto *home = m_client->delegate.homeNavViewController();
        m_client->loginModel().logout();
        QCOMPARE(m_client->root(), loginRoot);
        signIn();
        m_client->mainQueue.advance(250ms);
        QCOMPARE(m_client->root(), homeRoot);
        QCOMPARE(m_client->delegate.homeNavViewController(), home);
    }

    void theCompletionIsCalledOnceAndAfterAFailureNever()
    {
        QVERIFY(m_client->session.rememberLogin(u"student01"_s));
        int completions = 0;
        const auto complete = [&] { ++completions; };
        // The token outlives its session and brings nobody back.
        m_client->delegate.backGroundloginInWithRefresh(true, complete);
        QVERIFY(!m_client->session.isWaiting());
        m_client->account.session.resume();
        m_client->delegate.backGroundloginInWithRefresh(true, complete);
        QCOMPARE(completions, 0);
        QVERIFY(silentLoginEnds());
        QCOMPARE(completions, 1);
        for (const bool isLogin : {true, false, true})
            m_client->loginModel().setIsLogin(isLogin);
        m_client->mainQueue.advance(1h);
        QCOMPARE(completions, 1);
        QCOMPARE(m_client->root(), homeRoot);

        m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"status"_s, 500}});
        m_client->delegate.backGroundloginInWithRefresh(true, complete);
        QVERIFY(silentLoginEnds());
        m_client->loginModel().setIsLogin(true);
        QCOMPARE(completions, 1);
    }

    void nothingTellsOfThePersonOrTheDeviceBeforeConsent()
    {
        m_client->session.account.studentIdentifier.prepare();
        TRY_VERIFY(!m_client->session.account.studentIdentifier.uuid().isNull());
        m_sandbox.takeRequests();
        m_client->delegate.didFinishLaunchingWithOptions({});
        m_client->launch.splashAd()->setupXHLaunchAd();
        TRY_VERIFY(!m_client->session.isWaiting());
        m_client->mainQueue.advance(1h);
        QStringList asked;
        for (const TracedRequest &request : m_sandbox.takeRequests()) {
            asked << request.value(u"start"_s);
            QStringList sent = request.headers.values();
            sent << QString::fromUtf8(request.query) << QString::fromUtf8(request.body);
            QVERIFY(!sent.join(u' ').contains(m_client->session.account.studentIdentifier.uuid()));
            QVERIFY(!request.headers.contains(u"cookie"_s));
        }
        asked.sort();
        QCOMPARE(asked, (QStringList {u"appUpdateInfo"_s, u"listAd4App"_s}));
        // Whatever comes of a registration is stored.
        const auto registered
            = [this] { return !m_client->session.defaults.stringForKey(u"GTPushCid"_s).isNull(); };
        QVERIFY(!registered());
        m_client->launch.consent()->agree();
        TRY_VERIFY(registered());
    }

    void theSilentLoginsMessageWaitsForTheAdvertisement()
    {
        QVERIFY(remember());
        m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"status"_s, 500}});
        m_sandbox.addFault({{u"start"_s, u"listAd4App"_s}, {u"delay_ms"_s, 2000}});
        m_client->delegate.didFinishLaunchingWithOptions({});
        m_client->launch.splashAd()->setupXHLaunchAd();
        m_client->delegate.loginVC()->viewDidLoad();
        TRY_COMPARE(m_client->root(), loginRoot);
        QVERIFY(!m_client->shell.toast()->isVisible());
        m_client->mainQueue.advance(2s);
        QCOMPARE(m_client->shell.toast()->text(), u"请求错误"_s);
    }

    void theLaunchNotificationWaitsForItsTaker()
    {
        QVERIFY(remember());
        const QVariantMap notification {{u"payload"_s, u"https://p/"_s}};
        m_client->delegate.didFinishLaunchingWithOptions(notification);
        m_client->mainQueue.advance(1999ms);
        QVERIFY(m_tapped.isEmpty() && m_client->session.isWaiting());
        m_client->mainQueue.advance(1ms);
        QCOMPARE(m_tapped, QList<QVariant> {notification});
        QCOMPARE(m_client->delegate.takePushDictionary(), notification);
        // From now on the home container hears of them itself.
        m_client->pushRegistration.didReceiveNotification(notification);
        QCOMPARE(m_client->delegate.takePushDictionary(), std::nullopt);
        // But not while nobody is signed in; nor is it anybody else's.
        UserSession &session = m_client->account.session;
        for (const bool sameUser : {true, false}) {
            m_client->delegate.urlStr = u"https://h/"_s;
            session.logout();
            QVERIFY(m_client->delegate.takeUrlStr().isNull());
            m_client->pushRegistration.didReceiveNotification(notification);
            if (!sameUser)
                Q_EMIT session.userChanging();
            QCOMPARE(m_client->delegate.takePushDictionary(),
                sameUser ? std::optional(notification) : std::nullopt);
            session.resume();
        }
    }

    void aSignOutWhileTheWindowWaitsLeadsToTheLoginScreen()
    {
        QVERIFY(remember());
        m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"delay_ms"_s, 200}});
        m_client->delegate.didFinishLaunchingWithOptions({});
        QCOMPARE(m_client->root(), blankRoot);
        m_client->launch.updateCheck()->clickedButtonAtIndex(UpdateCheck::ForcedTag, 0);
        QCOMPARE(m_client->root(), loginRoot);
        QVERIFY(silentLoginEnds());
        m_client->mainQueue.advance(1h);
        QCOMPARE(m_client->root(), loginRoot);
        QVERIFY(
            !m_client->loginModel().isLogin() && m_client->session.savedCookieNames().isEmpty());
        QVERIFY(!m_client->shell.toast()->isVisible());
    }

    void theWindowSystemIsAskedToFollowTheLandscapePage()
    {
        QLoggingCategory::setFilterRules(u"vant.app.debug=true"_s);
        m_client->delegate.setLandscapeScreen(true);
        m_client->orientationRefusal = u"never"_s;
        QTest::ignoreMessage(QtDebugMsg, "强制竖屏错误:never");
        m_client->delegate.setLandscapeScreen(false);
        QCOMPARE(
            m_client->orientations, (QList {Qt::LandscapeOrientation, Qt::PortraitOrientation}));
        QWindow window;
        QVERIFY(WindowOrientation::request(&window, Qt::LandscapeOrientation).isNull());
        QCOMPARE(window.contentOrientation(), Qt::LandscapeOrientation);
    }
};

VANT_WEB_TEST_MAIN(AppDelegateTest)
#include "AppDelegateTest.moc"
