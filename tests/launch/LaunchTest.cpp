#include "launch/UpdateCheck.h"
#include "launch/ad/VANTSplashAdManager.h"
#include "platform/time/NotificationCenter.h"
#include "session/SessionClient.h"
#include "support/PageServer.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"
#include "ui/shell/Shell.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QSize screen {1170, 2532};
constexpr int wholeHuge = 50 * 1024 * 1024;

QByteArray png()
{
    QImage image(200, 400, QImage::Format_RGB32);
    // Noise, or the half of the file would hold all of the picture.
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, QRgb(x * 2654435761u ^ y * 40503u * unsigned(x + 1)));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "png");
    return bytes;
}

//! What there is besides the check for updates.
struct Bench
{
    explicit Bench(const PlatformProcess &sandbox, const QString &build)
        : hosts(sandbox.hosts())
        , client(hosts)
        , shell(client.mainQueue)
        , check(client.device, &client.account, &shell, configured(hosts, build), {})
    {
    }

    static DeploymentConfiguration configured(
        const DeploymentConfiguration::Hosts &hosts, const QString &build)
    {
        DeploymentConfiguration configuration;
        configuration.hosts = hosts;
        configuration.app.build = build;
        return configuration;
    }

    bool checkEnds()
    {
        check.checkAppUpdate();
        return waitFor([this] { return !client.isWaiting(); });
    }

    DeploymentConfiguration::Hosts hosts;
    SessionClient client;
    Shell shell;
    AlertView *alert {shell.alertView()};
    UpdateCheck check;
    QSignalSpy ended {&client.account.session, &UserSession::ended};
};

}

//! The advertisement over the launch, from the platform's list to its end, and the offer of a newer
//! build.
class LaunchTest : public QObject
{
    Q_OBJECT

private:
    using Phase = LaunchAd::Phase;

    PlatformProcess m_sandbox;
    PageServer m_pictures;
    std::unique_ptr<SessionClient> m_client;
    std::unique_ptr<NotificationCenter> m_notifications;
    std::unique_ptr<VANTSplashAdManager> m_manager;
    int m_finished = 0;

    LaunchAd *ad() { return m_manager->launchAd(); }
    HTTPNetwork *network() { return &m_client->network; }

    void launch()
    {
        m_finished = 0;
        m_manager = std::make_unique<VANTSplashAdManager>(&m_client->account.requests, network(),
            &m_client->mainQueue, m_notifications.get(), screen);
        m_manager->setupXHLaunchAd();
        QVERIFY(m_manager->isShowing());
    }

    void list(const QJsonValue &data)
    {
        m_sandbox.setAnswer({{u"start"_s, u"listAd4App"_s}, {u"data"_s, data}});
    }
    void listPicture(const QString &address)
    {
        list(QJsonArray {QJsonObject {{u"img_url"_s, address}}});
    }
    void advance(std::chrono::milliseconds time) { m_client->mainQueue.advance(time); }

private Q_SLOTS:
    void init()
    {
        m_sandbox.reset();
        m_manager.reset();
        m_client = std::make_unique<SessionClient>(m_sandbox.hosts());
        m_notifications = std::make_unique<NotificationCenter>();
        m_notifications->addObserver(
            u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &object) {
                QVERIFY(!object.isValid());
                QVERIFY(!m_manager->isShowing());
                ++m_finished;
            });
        m_sandbox.takeRequests();
    }

    void badAnswersEndWithoutWaiting_data()
    {
        QTest::addColumn<QJsonValue>("data");
        QTest::addColumn<QJsonObject>("fault"); //!< of the list, or of the picture
        const auto row
            = [](const char *name, const QJsonValue &data, const QJsonObject &fault = {}) {
                  QTest::newRow(name) << data << fault;
              };
        const auto picture = [](const QJsonValue &address) {
            return QJsonArray {QJsonObject {{u"img_url"_s, address}}};
        };
        const QString still = u"@/images/ad-still.png"_s;
        const QString path = u"/images/ad-still.png"_s;
        row("empty list", QJsonArray());
        row("no list", QJsonObject {{u"img_url"_s, still}});
        row("null", QJsonValue::Null);
        row("another scheme", picture(u"httpx://nowhere/"_s));
        row("missing", picture(u"@/images/none.png"_s));
        row("cut", picture(still), {{u"path"_s, path}, {u"cut"_s, true}});
        row("empty picture", picture(still), {{u"path"_s, path}, {u"body"_s, u""_s}});
        row("50 MiB", picture(still), {{u"path"_s, path}, {u"huge"_s, wholeHuge}});
        row("refused list", picture(still), {{u"start"_s, u"listAd4App"_s}, {u"status"_s, 500}});
        row("no JSON", picture(still), {{u"start"_s, u"listAd4App"_s}, {u"body"_s, u"<html>"_s}});
    }

    void badAnswersEndWithoutWaiting()
    {
        QFETCH(QJsonValue, data);
        QFETCH(const QJsonObject, fault);
        QByteArray text = QJsonDocument(QJsonArray {data}).toJson();
        text.replace("@", m_sandbox.address(PlatformProcess::Content).chopped(1).toUtf8());
        list(QJsonDocument::fromJson(text).array().at(0));
        if (!fault.isEmpty())
            m_sandbox.addFault(fault);
        launch();
        TRY_COMPARE(m_finished, 1);
        QCOMPARE(ad()->phase(), Phase::Gone);
        advance(1h);
        QCOMPARE(m_finished, 1);
    }

    void aDamagedPictureIsNotKept()
    {
        const QByteArray whole = png();
        m_pictures.setPage("/ad.png", whole.left(whole.size() / 2), "image/png");
        listPicture(m_pictures.url("/ad.png"));
        launch();
        TRY_COMPARE(m_finished, 1);
        m_pictures.setPage("/ad.png", whole, "image/png");
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
    }

    void goesOnAfterTwoSecondsAndKeepsALatePictureForTheNextLaunch()
    {
        m_sandbox.addFault({{u"path"_s, u"/images/ad-still.png"_s}, {u"delay_ms"_s, 300}});
        const QString address
            = m_sandbox.address(PlatformProcess::Content) + u"images/ad-still.png"_s;
        listPicture(address);
        launch();
        TRY_VERIFY(m_client->account.requestManager.connectItems().empty());
        advance(1999ms);
        QCOMPARE(m_finished, 0);
        advance(1ms);
        QCOMPARE(m_finished, 1);
        TRY_VERIFY(network()->cache()->find(QUrl(address)).has_value());
        QCOMPARE(ad()->phase(), Phase::Gone);

        m_sandbox.addFault({{u"path"_s, u"/images/ad-still.png"_s}, {u"status"_s, 500}});
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
        QCOMPARE(ad()->picture()->frame().height(), screen.height());
    }

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
        row("as numbers, not as texts", u"9"_s, data(u"10"_s, u"2"_s), 101);
        row("forced by a text", u"119"_s, data(120, u"1"_s), 101);
        row("forced by a negative number", u"119"_s, data(120, -1), 101);
        row("no number", u"0"_s, QJsonObject {{u"is_force"_s, 1}}, 0);
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
        QVERIFY2(bench.client.urlOpener.opened.isEmpty(), "going back is no consent");
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
        LoginModel &login = bench.client.account.loginModel;
        QNetworkCookie session("mo", "1");
        session.setDomain(u"127.0.0.1"_s);
        session.setPath(u"/"_s);
        bench.client.cookieStorage->setCookie(session);
        bench.client.account.ssoCookies.handleCookie();
        login.setUserName(u"u"_s);
        login.setPassword(u"p"_s);
        login.setIsLogin(true);
        bench.client.account.session.resume();
        bench.check.showUpdate(u"新"_s, forced ? UpdateCheck::Force::Yes : UpdateCheck::Force::No);
        bench.alert->press(button);
        QCOMPARE(bench.client.urlOpener.opened,
            opens ? QList {QUrl(bench.hosts.official + u"pages/official/h5/download.jsp"_s)}
                  : QList<QUrl>());
        QCOMPARE(login.isLogin(), !forced);
        QCOMPARE(bench.ended.size(), forced ? 1 : 0);
        QCOMPARE(login.userName(), forced ? u""_s : u"u"_s);
        QCOMPARE(login.password(), forced ? u""_s : u"p"_s);
        QCOMPARE(bench.client.savedCookieNames().isEmpty(), forced);
        QCOMPARE(bench.client.cookieStorage->holdsCookieNamed({"mo"}), !forced);
        QVERIFY(!bench.alert->isVisible());
    }
};

QTEST_GUILESS_MAIN(LaunchTest)
#include "LaunchTest.moc"
