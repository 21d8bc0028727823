#include "launch/UpdateCheck.h"
#include "platform/NotificationCenter.h"
#include "platform/UrlOpener.h"
#include "session/SessionClient.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"
#include "ui/Shell.h"

using namespace Qt::StringLiterals;

namespace {

//! Notes what it is asked to open.
class NotedUrlOpener : public UrlOpener
{
public:
    bool canOpenURL(const QUrl &) const override { return true; }
    bool openURL(const QUrl &url) override
    {
        opened << url.toString();
        return true;
    }

    QStringList opened;
};

//! What there is besides the check.
struct Bench
{
    explicit Bench(const PlatformProcess &sandbox, const QString &build)
        : hosts(sandbox.hosts())
        , client(hosts)
        , shell(client.mainQueue)
        , check({.requests = &client.net.requests,
              .shell = &shell,
              .urlOpener = &opener,
              .loginModel = &client.net.loginModel,
              .ssoCookies = &client.cookies,
              .notifications = &notifications,
              .build = build,
              .officialHost = hosts.official,
              .launchAdShowing = [this] { return adShowing; },
              .endSession = [this] { ++sessionsEnded; }})
    {
    }

    bool checkEnds()
    {
        check.checkAppUpdate();
        return QTest::qWaitFor([this] { return !client.isWaiting(); }, patienceMs);
    }

    DeploymentConfiguration::Hosts hosts;
    SessionClient client;
    Shell shell;
    AlertView *alert {shell.alertView()};
    NotificationCenter notifications;
    NotedUrlOpener opener;
    int sessionsEnded = 0;
    bool adShowing = false;
    UpdateCheck check;
};

}

//! The offer of a newer build.
class UpdateCheckTest : public QObject
{
    Q_OBJECT

private:
    PlatformProcess m_sandbox;

private Q_SLOTS:
    void init() { m_sandbox.reset(); }

    void comparesAndOffers_data()
    {
        QTest::addColumn<QString>("build");
        QTest::addColumn<QJsonObject>("envelope");
        QTest::addColumn<int>("tag"); //!< 0: no dialog
        const auto row = [](const char *name, const QString &build, const QJsonValue &data, int tag,
                             int code = 200) {
            QTest::newRow(name) << build << QJsonObject {{u"code"_s, code}, {u"data"_s, data}}
                                << tag;
        };
        const auto data = [](const QJsonValue &number, const QJsonValue &force) {
            return QJsonObject {
                {u"bulid_no"_s, number}, {u"is_force"_s, force}, {u"version_content"_s, u"新"_s}};
        };
        row("equal", u"120"_s, data(120, 1), 0);
        row("older", u"120"_s, data(119, 1), 0);
        row("newer", u"119"_s, data(120, 0), 102);
        row("texts", u"119"_s, data(u"120"_s, u"0"_s), 102);
        row("equal texts", u"120"_s, data(u"120"_s, u"0"_s), 0);
        row("as numbers, not as texts", u"9"_s, data(u"10"_s, u"2"_s), 101);
        row("forced by a text", u"119"_s, data(120, u"1"_s), 101);
        row("forced by a negative number", u"119"_s, data(120, -1), 101);
        row("forced by a word", u"119"_s, data(120, u"yes"_s), 102);
        row("forced by true", u"119"_s, data(120, true), 101);
        row("no force", u"119"_s, QJsonObject {{u"bulid_no"_s, 120}}, 102);
        row("no number", u"0"_s, QJsonObject {{u"is_force"_s, 1}}, 0);
        row("null number", u"0"_s, data(QJsonValue::Null, 1), 0);
        row("build that is no number", u"beta"_s, data(1, 0), 102);
        row("no object", u"0"_s, u"120"_s, 0);
        row("the other success", u"119"_s, data(120, 1), 0, 8888);
        row("refusal", u"119"_s, data(120, 1), 0, 500);
    }

    void comparesAndOffers()
    {
        QFETCH(const QString, build);
        QFETCH(const QJsonObject, envelope);
        QFETCH(const int, tag);
        m_sandbox.setAnswer({{u"start"_s, u"appUpdateInfo"_s}, {u"envelope"_s, envelope}});
        Bench bench(m_sandbox, build);
        m_sandbox.takeRequests();
        QVERIFY(bench.checkEnds());
        const auto call = m_sandbox.takeRequests().constFirst();
        QCOMPARE(call.value(u"cur_bulid_no"_s), build);
        QCOMPARE(call.value(u"app_name"_s), u"vant_moqe_st"_s);
        QCOMPARE(bench.alert->isVisible(), tag != 0);
        if (tag == 0)
            return;
        QCOMPARE(bench.alert->tag(), tag);
        QCOMPARE(bench.alert->title(), u"版本更新"_s);
        QCOMPARE(bench.alert->buttons(),
            tag == 101 ? QStringList {u"确定"_s} : (QStringList {u"取消"_s, u"确定"_s}));
        QCOMPARE(bench.alert->cancel(), tag == 102);
    }

    void actsOnTheButton_data()
    {
        QTest::addColumn<bool>("forced");
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("opens");
        QTest::newRow("optional, cancelled") << false << 0 << false;
        QTest::newRow("optional, confirmed") << false << 1 << true;
        QTest::newRow("forced") << true << 0 << true;
    }

    void actsOnTheButton()
    {
        QFETCH(const bool, forced);
        QFETCH(const int, button);
        QFETCH(const bool, opens);
        Bench bench(m_sandbox, u"1"_s);
        QVERIFY(bench.client.rememberLogin(u"student01"_s));
        LoginModel &login = bench.client.net.loginModel;
        QNetworkCookie session("mo", "1");
        session.setDomain(u"127.0.0.1"_s);
        session.setPath(u"/"_s);
        bench.client.net.cookies->setCookie(session);
        bench.client.cookies.handleCookie();
        login.setUserName(u"u"_s);
        login.setPassword(u"p"_s);
        login.setIsLogin(true);
        bench.check.showUpdate(u"新"_s, forced ? UpdateCheck::Force::Yes : UpdateCheck::Force::No);
        bench.alert->press(button);
        QCOMPARE(bench.opener.opened,
            opens ? QStringList {bench.hosts.official + u"pages/official/h5/download.jsp"_s}
                  : QStringList());
        QCOMPARE(login.isLogin(), !forced);
        QCOMPARE(bench.sessionsEnded, forced ? 1 : 0);
        QCOMPARE(login.userName(), forced ? u""_s : u"u"_s);
        QCOMPARE(login.password(), forced ? u""_s : u"p"_s);
        QCOMPARE(bench.client.savedCookieNames().isEmpty(), forced);
        QCOMPARE(bench.client.net.cookies->holdsCookieNamed({"mo"}), !forced);
        QVERIFY(!bench.alert->isVisible());
    }

    void waitsForTheAdvertisement()
    {
        Bench bench(m_sandbox, u"1"_s);
        bench.adShowing = true;
        bench.check.showUpdate(u"新"_s, UpdateCheck::Force::No);
        QVERIFY(!bench.alert->isVisible());
        bench.adShowing = false;
        bench.notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
        QVERIFY(bench.alert->isVisible());
        bench.alert->press(0);
        bench.notifications.postNotificationName(u"xhLaunchAdShowFinish"_s);
        QVERIFY(!bench.alert->isVisible());
    }
};

QTEST_GUILESS_MAIN(UpdateCheckTest)
#include "UpdateCheckTest.moc"
