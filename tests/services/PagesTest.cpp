#include "platform/http/HTTPNetwork.h"
#include "services/LocationForPages.h"
#include "services/PushRegistration.h"
#include "services/share/ShareForPages.h"

#include "model/LoginModel.h"
#include "platform/http/HTTPTask.h"
#include "platform/push/PushClient.h"
#include "platform/time/NotificationCenter.h"
#include "session/UserSession.h"
#include "support/ManualMainQueue.h"
#include "support/Table.h"
#include "ui/shell/Shell.h"

#include <QJsonDocument>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace {

//! A service that notes what is asked of it; the test says what it reports.
class ScriptedPushClient : public PushClient
{
public:
    void startSdk(const QString &appId, const QString &appKey, const QString &appSecret) override
    {
        calls << u"start %1 %2 %3"_s.arg(appId, appKey, appSecret);
    }
    void registerRemoteNotification(int types) override { calls << u"register %1"_s.arg(types); }
    void resetBadge() override { }

    QStringList calls;
};

const QString outcomeKey = QStringLiteral("GTPushCid");

}

//! What pages are told of places and of notifications, and the pictures they share.
class PagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheAnswer()
    {
        const Location location {24.4798, 118.0894123};
        const LocationReGeocode address {
            u"中国"_s, {}, u"厦门 市"_s, {}, u"软件园二期"_s, u" A 1"_s};
        const LocationError error {LocationError::ReGeocodeFailed, u"地址查询失败"_s};
        const QString place = u"'latitude': '24.479800', 'lontitude': '118.089412'}}"_s;
        const std::tuple<std::optional<Location>, std::optional<LocationReGeocode>,
            std::optional<LocationError>, QString>
            rows[] {
                {location, address, {},
                    u"{'code': '200', 'msg': '获取成功', 'data': {'addr': "
                    "'中国(null)厦门市(null)软件园二期A1', "_s
                        + place},
                {location, {}, error,
                    u"{'code': '200', 'msg': '地址查询失败', 'data': {'addr': "
                    "'(null)(null)(null)(null)(null)(null)', "_s
                        + place},
                {{}, {}, error, u"{'code': '-1', 'msg': '地址查询失败', 'data': {}}"_s},
            };
        QLoggingCategory::setFilterRules(u"vant.services.debug=true"_s);
        for (const auto &[where, addressOfIt, failure, json] : rows) {
            if (where) {
                QTest::ignoreMessage(QtDebugMsg, "当前位置信息：经纬度：***,***");
                QTest::ignoreMessage(QtDebugMsg,
                    QRegularExpression(
                        u"^onGetBDLocation: [^.园]*\"latitude\": \"\\*+\"[^.园]*$"_s));
            }
            const QString text = LocationForPages::answer(where, addressOfIt, failure);
            QCOMPARE(QJsonDocument::fromJson(text.toUtf8()),
                QJsonDocument::fromJson(QString(json).replace(u'\'', u'"').toUtf8()));
            QVERIFY(text.contains(u"\n    \"code\""_s));
        }
    }

    void keepsTheClientIdOverFailures()
    {
        m_registration.start();
        QCOMPARE(m_client.calls, (QStringList {u"start id key secret"_s, u"register 7"_s}));
        Q_EMIT m_client.didRegisterClient(u"cid-1"_s);
        QCOMPARE(UserDefaults(m_file).stringForKey(u"cid"_s), u"cid-1"_s);
        QCOMPARE(UserDefaults(m_file).stringForKey(outcomeKey), u"getCidSuccess"_s);

        m_client.calls.clear();
        m_registration.bindGeTuiAgain();
        // The permission is asked for at launch only.
        QCOMPARE(m_client.calls, QStringList {u"start id key secret"_s});
        Q_EMIT m_client.didOccurError(u"no network"_s);
        QCOMPARE(UserDefaults(m_file).stringForKey(outcomeKey), u"getCidFailed"_s);
        QCOMPARE(m_model.c_id(), u"cid-1"_s);
        QCOMPARE(m_posted.size(), 0);
        // Only the next id after a restart stops the timer.
        Q_EMIT m_client.didRegisterClient(u"cid-2"_s);
        QCOMPARE(m_posted.takeFirst().first(), u"STOPNSTimer"_s);
        QCOMPARE(m_model.c_id(), u"cid-2"_s);
    }

    void postsNotifications()
    {
        m_session.resume();
        const QVariantMap userInfo {{u"payload"_s, u"https://p/"_s}};
        m_model.messageCount = 3;
        Q_EMIT m_client.didReceiveNotification(userInfo);
        QVERIFY(m_registration.isAppBackground);
        QCOMPARE(m_model.messageCount, 3);
        QCOMPARE(m_posted.takeFirst().first(), u"backGeTuiPushLoadNewWeb"_s);

        Q_EMIT m_client.willPresentNotification(userInfo);
        QVERIFY(!m_registration.isAppBackground);
        QCOMPARE(m_model.messageCount, 0);
        // Nobody would open the page yet, and nobody does in this run.
        QCOMPARE(m_posted.size(), 0);
        NotificationCenter later;
        QSignalSpy postedLater(&later, &NotificationCenter::posted);
        UserDefaults kept(m_file);
        PushRegistration nextRun(&m_client, {}, &m_model, &kept, &later, &m_session);
        QObject home;
        for (NotificationCenter *center : {&later, &m_notifications})
            center->addObserver(u"GeTuiPushLoadNewWeb"_s, &home, [](const QVariant &) {});
        QCOMPARE(m_posted.size() + postedLater.size(), 0);
        for (QSignalSpy *posted : {&postedLater, &m_posted}) {
            TRY_COMPARE(posted->size(), 1);
            QCOMPARE(posted->first()[0], u"GeTuiPushLoadNewWeb"_s);
            QCOMPARE(posted->takeFirst()[1].value<QVariant>().toMap(), userInfo);
        }
        QVERIFY(!UserDefaults(m_file).objectForKey(u"PushWaiting"_s).isValid());
        // Signed out, it waits for the same user, and is nobody else's.
        for (const bool sameUser : {true, false}) {
            m_session.expire();
            Q_EMIT m_client.willPresentNotification(userInfo);
            if (!sameUser)
                Q_EMIT m_session.userChanging();
            QCOMPARE(m_posted.size(), 0);
            m_session.resume();
            Q_EMIT m_session.begun();
            QCOMPARE(m_posted.size(), sameUser ? 1 : 0);
            m_posted.clear();
        }
        QVERIFY(!UserDefaults(m_file).objectForKey(u"PushWaiting"_s).isValid());
    }

    void aSharedPictureIsLoadedNoLongerThanItsPanelStandsAndNotAnySize_data()
    {
        Ends::rows({
            {"newer picture", "9", [](auto &share, auto *) { share.action({}); }},
            {"newer link", "9",
                [](auto &share, auto *) {
                    share.linkShareAction(u"https://h.example/"_s, u"t"_s, {}, {});
                }},
            {"closed", "9",
                [](auto &, auto *navigator) {
                    qobject_cast<OMShareView *>(navigator->topViewController())->left();
                }},
            {"too large", "20971521", [](auto &, auto *) {}},
        });
    }

    void aSharedPictureIsLoadedNoLongerThanItsPanelStandsAndNotAnySize()
    {
        const auto [size, end] = Ends::row();
        // The picture never comes to its end.
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        ManualMainQueue queue;
        Shell shell(queue);
        HTTPNetwork network;
        ShareForPages share(&shell, nullptr, &network);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the picture to share"_s));
        share.action(QUrl(u"http://127.0.0.1:%1/p.png"_s.arg(server.serverPort())));
        TRY_VERIFY(server.hasPendingConnections());
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        QByteArray request;
        TRY_VERIFY((request += socket->readAll()).endsWith("\r\n\r\n"));
        socket->write("HTTP/1.1 200 OK\r\nContent-Length: " + size + "\r\n\r\n");
        socket->flush();
        end(share, shell.navigator());
        // Sooner than by its silence.
        QVERIFY(waitFor(
            [&] { return socket->state() == QAbstractSocket::UnconnectedState; }, patienceMs / 2));
        TRY_VERIFY(!network.findChild<HTTPTask *>());
        QVERIFY(shell.navigator()->screens()->count() <= 1);
    }

private:
    using Ends = Table<QByteArray, std::function<void(ShareForPages &, Navigator *)>>;

    const QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(u"settings.ini"_s);
    UserDefaults m_defaults {m_file};
    LoginModel m_model {&m_defaults};
    NotificationCenter m_notifications;
    UserSession m_session {&m_model, &m_defaults, nullptr, nullptr, nullptr};
    ScriptedPushClient m_client;
    PushRegistration m_registration {&m_client,
        {.broker = {}, .appId = u"id"_s, .appKey = u"key"_s, .appSecret = u"secret"_s}, &m_model,
        &m_defaults, &m_notifications, &m_session};
    QSignalSpy m_posted {&m_notifications, &NotificationCenter::posted};
};

QTEST_GUILESS_MAIN(PagesTest)
#include "PagesTest.moc"
