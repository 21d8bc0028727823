#include "app/DelegateClient.h"
#include "support/SandboxProcess.h"
#include "ui/NavigationController.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString loginRoot = QString::fromLatin1(NavigationController::screenName);
const QString homeRoot = QStringLiteral("HomeScreen");
const QString blankRoot = QStringLiteral("");
const QString tapped = QStringLiteral("backGeTuiPushLoadNewWeb");

}

class AppDelegateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void theFirstLaunchIsMarked();
    void aLaterLaunchLeavesTheMarks();
    void routesTheLaunch_data();
    void routesTheLaunch();
    void aStoredLoginLeadsHome();
    void aLoginThatIsNotAcceptedLeadsToTheLoginScreen_data();
    void aLoginThatIsNotAcceptedLeadsToTheLoginScreen();
    void aLoginOnTheScreenLeadsHome();
    void aSignOutBeforeTheSwitchWins();
    void gotoLoginVCMarksNoVersion();
    void everyObservationRoutesOnceMore();
    void theCompletionIsCalledOnce_data();
    void theCompletionIsCalledOnce();
    void aFailureCallsNoCompletion();
    void theLaunchNotificationWaitsForItsTaker();
    void aLaunchWithoutNotificationKeepsNothing();
    void registersTheServicesAtLaunch();
    void clearsTheBadgeWhenActive();
    void passesCallbacksOn();
    void turnsOnlyWhenAPageAsks();

private:
    void launch(const std::optional<QVariantMap> &notification = {});
    //! Signs in with the stored token and lets the answer come.
    bool silentLoginEnds() const
    {
        return QTest::qWaitFor([this] { return !m_client->session.isWaiting(); }, 20'000);
    }

    SandboxProcess m_sandbox;
    std::unique_ptr<DelegateClient> m_client;
    QList<QVariant> m_tapped;
};

void AppDelegateTest::initTestCase()
{
    QVERIFY(m_sandbox.isRunning());
}

void AppDelegateTest::init()
{
    m_sandbox.reset();
    DeploymentConfiguration configuration;
    configuration.hosts = m_sandbox.hosts();
    configuration.wechat.appId = u"wx1"_s;
    configuration.wechat.universalLink = u"https://link.example/"_s;
    configuration.qq.appId = u"qq1"_s;
    m_client.reset();
    m_client = std::make_unique<DelegateClient>(configuration);
    m_tapped.clear();
    m_client->notifications.addObserver(
        tapped, this, [this](const QVariant &userInfo) { m_tapped << userInfo; });
}

void AppDelegateTest::launch(const std::optional<QVariantMap> &notification)
{
    QVERIFY(m_client->delegate.didFinishLaunchingWithOptions(notification));
}

void AppDelegateTest::theFirstLaunchIsMarked()
{
    launch();
    QVERIFY(m_client->loginModel().isFirstInstall());
    QVERIFY(m_client->loginModel().isLoginOut());
    QCOMPARE(m_client->root(), loginRoot);
    QCOMPARE(m_client->delegate.loginViewController()->topViewController(),
        m_client->delegate.loginVC());
}

void AppDelegateTest::aLaterLaunchLeavesTheMarks()
{
    m_client->loginModel().setIsFirstInstall(true);
    m_client->session.binding.regidFailedCount = 10;
    launch();
    QVERIFY(!m_client->loginModel().isLoginOut());
    QCOMPARE(m_client->session.binding.regidFailedCount, 0);
}

void AppDelegateTest::routesTheLaunch_data()
{
    QTest::addColumn<bool>("isLogin");
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("root");
    QTest::newRow("signed out, no token") << false << QString() << loginRoot;
    QTest::newRow("signed out, token") << false << u"t"_s << loginRoot;
    QTest::newRow("signed in, no token") << true << QString() << loginRoot;
    QTest::newRow("signed in, empty token") << true << u""_s << loginRoot;
    QTest::newRow("signed in, token") << true << u"t"_s << blankRoot;
}

void AppDelegateTest::routesTheLaunch()
{
    QFETCH(bool, isLogin);
    QFETCH(QString, token);
    QFETCH(QString, root);
    m_client->loginModel().setIsLogin(isLogin);
    m_client->loginModel().setLogin_token(token);
    launch();
    QCOMPARE(m_client->root(), root);
    QCOMPARE(m_client->session.isWaiting(), root == blankRoot);
    m_client->mainQueue.advance(1h);
    QCOMPARE(m_client->root(), root);
    QVERIFY(!m_client->loginModel().isNotBeforeVersion());
}

void AppDelegateTest::aStoredLoginLeadsHome()
{
    QVERIFY(m_client->session.rememberLogin(u"student01"_s));
    m_client->loginModel().setIsLogin(true);
    launch();
    QVERIFY(silentLoginEnds());
    QVERIFY(m_client->loginModel().isLogin());
    QCOMPARE(m_client->loginModel().userModel->user_code, u"student01"_s);

    m_client->mainQueue.advance(249ms);
    QCOMPARE(m_client->root(), blankRoot);
    QVERIFY(!m_client->loginModel().isNotBeforeVersion());
    m_client->mainQueue.advance(1ms);
    QCOMPARE(m_client->root(), homeRoot);
    QCOMPARE(m_client->shell.navigator()->rootViewController(),
        m_client->delegate.homeNavViewController());
    QVERIFY(m_client->loginModel().isNotBeforeVersion());
}

void AppDelegateTest::aLoginThatIsNotAcceptedLeadsToTheLoginScreen_data()
{
    QTest::addColumn<QString>("account");
    QTest::addColumn<QJsonObject>("fault");
    QTest::addColumn<QString>("toast");

    const auto body = [](const QString &text) {
        return QJsonObject {{u"start"_s, u"login4H5"_s}, {u"body"_s, text}};
    };
    QTest::newRow("an account that may not")
        << u"parent01"_s << QJsonObject() << u"亲，您没有权限登录"_s;
    QTest::newRow("a refusal") << u"student01"_s
                               << body(u"{\"code\": 401, \"msg\": \"登录已过期\"}"_s)
                               << u"登录已过期"_s;
    QTest::newRow("no answer") << u"student01"_s << body(u"<html>"_s) << u"请求错误"_s;
}

void AppDelegateTest::aLoginThatIsNotAcceptedLeadsToTheLoginScreen()
{
    QFETCH(QString, account);
    QFETCH(QJsonObject, fault);
    QFETCH(QString, toast);
    QVERIFY(m_client->session.rememberLogin(account));
    if (!fault.isEmpty())
        m_sandbox.addFault(fault);
    m_client->loginModel().setIsLogin(true);
    const QString token = m_client->loginModel().login_token();
    launch();
    QVERIFY(silentLoginEnds());

    QCOMPARE(m_client->root(), loginRoot);
    QVERIFY(!m_client->loginModel().isLogin());
    QCOMPARE(m_client->loginModel().login_token(), token);
    QCOMPARE(m_client->shell.toast()->text(), toast);
    QCOMPARE(m_client->shell.toast()->kind(), Toast::Kind::Error);
    m_client->mainQueue.advance(1h);
    QCOMPARE(m_client->root(), loginRoot);
}

void AppDelegateTest::aLoginOnTheScreenLeadsHome()
{
    launch();
    m_client->loginModel().setLogin_token(u"t"_s);
    m_client->loginModel().setIsLogin(true);
    QCOMPARE(m_client->root(), loginRoot);
    m_client->mainQueue.advance(250ms);
    QCOMPARE(m_client->root(), homeRoot);
    QVERIFY(m_client->loginModel().isNotBeforeVersion());

    const auto *home = m_client->delegate.homeNavViewController();
    m_client->loginModel().logout();
    QCOMPARE(m_client->root(), loginRoot);
    m_client->loginModel().setIsLogin(true);
    m_client->mainQueue.advance(250ms);
    QCOMPARE(m_client->root(), homeRoot);
    QCOMPARE(m_client->delegate.homeNavViewController(), home);
}

void AppDelegateTest::aSignOutBeforeTheSwitchWins()
{
    launch();
    m_client->loginModel().setLogin_token(u"t"_s);
    m_client->loginModel().setIsLogin(true);
    m_client->mainQueue.advance(100ms);
    m_client->loginModel().logout();
    m_client->mainQueue.advance(1h);
    QCOMPARE(m_client->root(), loginRoot);
}

void AppDelegateTest::gotoLoginVCMarksNoVersion()
{
    m_client->loginModel().setLogin_token(u"t"_s);
    m_client->loginModel().setIsLogin(true);
    m_client->delegate.gotoLoginVC();
    QVERIFY(!m_client->loginModel().isLogin());
    QCOMPARE(m_client->root(), loginRoot);

    m_client->loginModel().setIsLogin(true);
    m_client->mainQueue.advance(250ms);
    QCOMPARE(m_client->root(), homeRoot);
    QVERIFY(!m_client->loginModel().isNotBeforeVersion());
}

void AppDelegateTest::everyObservationRoutesOnceMore()
{
    launch();
    const int waiting = m_client->mainQueue.waiting();
    m_client->delegate.gotoLoginVC();
    m_client->delegate.gotoLoginVC();
    QCOMPARE(m_client->mainQueue.waiting(), waiting);
    m_client->loginModel().setLogin_token(u"t"_s);
    m_client->loginModel().setIsLogin(true);
    QCOMPARE(m_client->mainQueue.waiting(), waiting + 3);
    m_client->loginModel().setIsLogin(true);
    QCOMPARE(m_client->mainQueue.waiting(), waiting + 6);
}

void AppDelegateTest::theCompletionIsCalledOnce_data()
{
    QTest::addColumn<bool>("refresh");
    QTest::newRow("with refresh") << true;
    QTest::newRow("without") << false;
}

void AppDelegateTest::theCompletionIsCalledOnce()
{
    QFETCH(bool, refresh);
    QVERIFY(m_client->session.rememberLogin(u"student01"_s));
    int completions = 0;
    m_client->delegate.backGroundloginInWithRefresh(refresh, [&] {
        ++completions;
        QCOMPARE(m_client->loginModel().isLogin(), refresh);
    });
    QCOMPARE(completions, 0);
    QVERIFY(silentLoginEnds());
    QCOMPARE(completions, 1);
    QCOMPARE(m_client->loginModel().isLogin(), refresh);

    m_client->loginModel().setIsLogin(true);
    m_client->loginModel().setIsLogin(false);
    m_client->loginModel().setIsLogin(true);
    m_client->mainQueue.advance(1h);
    QCOMPARE(completions, 1);
    QCOMPARE(m_client->root(), refresh ? homeRoot : blankRoot);
}

void AppDelegateTest::aFailureCallsNoCompletion()
{
    QVERIFY(m_client->session.rememberLogin(u"student01"_s));
    m_sandbox.addFault({{u"start"_s, u"login4H5"_s}, {u"status"_s, 500}, {u"times"_s, 2}});
    int completions = 0;
    m_client->delegate.backGroundloginIn([&] { ++completions; });
    QVERIFY(silentLoginEnds());
    m_client->delegate.backGroundloginInWithRefresh(false, [&] { ++completions; });
    QVERIFY(silentLoginEnds());
    m_client->loginModel().setIsLogin(true);
    QCOMPARE(completions, 0);
}

void AppDelegateTest::theLaunchNotificationWaitsForItsTaker()
{
    QVERIFY(m_client->session.rememberLogin(u"student01"_s));
    m_client->loginModel().setIsLogin(true);
    const QVariantMap notification {{u"payload"_s, u"https://p/"_s}};
    launch(notification);
    m_client->mainQueue.advance(1999ms);
    QVERIFY(m_tapped.isEmpty());
    // The silent login is still on its way.
    QVERIFY(m_client->session.isWaiting());
    m_client->mainQueue.advance(1ms);
    QCOMPARE(m_tapped, QList<QVariant> {notification});

    QCOMPARE(m_client->delegate.takePushDictionary(), notification);
    QCOMPARE(m_client->delegate.takePushDictionary(), std::nullopt);
    // From now on the home container hears of them itself.
    m_client->pushRegistration.didReceiveNotification(notification);
    QCOMPARE(m_client->delegate.takePushDictionary(), std::nullopt);
}

void AppDelegateTest::aLaunchWithoutNotificationKeepsNothing()
{
    const QVariantMap early {{u"payload"_s, u"https://early/"_s}};
    launch();
    m_client->pushRegistration.didReceiveNotification(early);
    m_client->mainQueue.advance(2s);
    QCOMPARE(m_tapped, (QList<QVariant> {early, QVariant()}));
    QCOMPARE(m_client->delegate.takePushDictionary(), early);
}

void AppDelegateTest::registersTheServicesAtLaunch()
{
    launch();
    QCOMPARE(m_client->services.calls,
        (QStringList {u"https 1"_s, u"map 3c9e0b7d51f6a2e84c07d9b3a6e5f201"_s,
            u"push Ws6pHj2KeDn8TrVbLc4QyA Rf3nYtUo9GkE5aLqZvM0Xc Qm4TzLr8VbN2xKc7PdWs1H"_s,
            u"show 7"_s, u"share wx1 qq1"_s, u"wechat wx1 https://link.example/"_s}));
}

void AppDelegateTest::clearsTheBadgeWhenActive()
{
    m_client->delegate.applicationDidBecomeActive();
    QCOMPARE(m_client->services.calls, QStringList {u"resetBadge"_s});
}

void AppDelegateTest::passesCallbacksOn()
{
    QVERIFY(m_client->delegate.openURL(QUrl(u"wx1://oauth?code=c"_s)));
    QVERIFY(!m_client->delegate.openURL(QUrl(u"other://x"_s)));
    QVERIFY(m_client->delegate.continueUserActivity(QUrl(u"https://link.example/wx"_s)));
    QVERIFY(!m_client->delegate.continueUserActivity(QUrl(u"https://elsewhere.example/"_s)));

    QList<QVariant> answers;
    m_client->notifications.addObserver(
        u"WechatAuthCode"_s, this, [&](const QVariant &answer) { answers << answer; });
    Q_EMIT m_client->wxApi.onResp({u"c"_s, u"s"_s});
    QCOMPARE(answers,
        QList<QVariant> {QVariant(QVariantMap {{u"code"_s, u"c"_s}, {u"state"_s, u"s"_s}})});
}

void AppDelegateTest::turnsOnlyWhenAPageAsks()
{
    AppDelegate &delegate = m_client->delegate;
    QSignalSpy asked(&delegate, &AppDelegate::supportedInterfaceOrientationsChanged);
    QCOMPARE(int(delegate.supportedInterfaceOrientations()), 2);
    delegate.setLandscapeScreen(true);
    QCOMPARE(int(delegate.supportedInterfaceOrientations()), 8);
    delegate.setLandscapeScreen(false);
    QCOMPARE(int(delegate.supportedInterfaceOrientations()), 2);
    QCOMPARE(asked.size(), 2);
}

int main(int argc, char *argv[])
{
    // The web engine wants to be set up before the application object.
    QtWebEngineQuick::initialize();
    QGuiApplication application(argc, argv);
    AppDelegateTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AppDelegateTest.moc"
