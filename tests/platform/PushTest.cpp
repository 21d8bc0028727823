#include "PrivateBus.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QDBusConnection>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// What the sandbox's configuration says.
const QString appId = QStringLiteral("Sb7xQeLw2RkM9tYcVn4HgD");
const QString appKey = QStringLiteral("Sb3kUyPz8VdN5wJqFa6TsB");
const QString appSecret = QStringLiteral("Sb9gCmXr4HoL7eKtZi2WvY");
const QString page = QStringLiteral("https://portal.example/news?id=7");

//! Stands in for the desktop's notification service.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    NotificationService()
    {
        m_bus.registerObject(u"/org/freedesktop/Notifications"_s, this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(u"org.freedesktop.Notifications"_s);
    }
    ~NotificationService() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    QStringList shown;

public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &title, const QString &body,
        const QStringList &actions, const QVariantMap &, int)
    {
        shown << title + u'|' + body + u'|' + actions.value(0);
        return uint(shown.size());
    }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);
    void NotificationClosed(uint id, uint reason);

private:
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"notification service"_s);
};

//! One life of the push client, with all that it has reported.
struct Client
{
    Client(const QString &broker, const QString &storeFile, const QString &extraCaFile = {},
        const QString &secret = appSecret)
        : client({broker, extraCaFile, storeFile}, &queue, &notifications, &badge)
    {
        client.registerRemoteNotification(
            PushClient::Badge | PushClient::Sound | PushClient::Alert);
        client.startSdk(appId, appKey, secret);
    }

    QStringList payloads() const
    {
        QStringList list;
        for (const QList<QVariant> &call : presented)
            list << call[0].toMap()[u"payload"_s].toString();
        return list;
    }

    ManualMainQueue queue;
    DesktopNotifications notifications {u"学校"_s, u"vant-student"_s};
    ApplicationBadge badge {u"vant-student.desktop"_s};
    MqttPushClient client;
    QSignalSpy registered {&client, &PushClient::didRegisterClient};
    QSignalSpy failed {&client, &PushClient::didOccurError};
    QSignalSpy presented {&client, &PushClient::willPresentNotification};
    QSignalSpy tapped {&client, &PushClient::didReceiveNotification};
};

}

//! The push client against the real broker, and notifications on a bus of the test's own.
class PushTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QJsonObject broker
            = QJsonDocument::fromJson(m_sandbox.control(u"_control/push"_s)).object();
        m_broker = broker[u"broker"].toString();
        m_encryptedBroker = broker[u"tls"].toString();
        QVERIFY2(!m_broker.isEmpty(), "no broker");
        QFile certificate(m_folder.filePath(u"ca.pem"_s));
        QVERIFY(certificate.open(QIODevice::WriteOnly));
        certificate.write(m_sandbox.control(u"_control/certificate.pem"_s));
    }

    // The first, for a window here stays active once it has been.
    void aTapInTheBackgroundComesOnce()
    {
        QVERIFY(QGuiApplication::applicationState() != Qt::ApplicationActive);
        Client device(m_broker, freshStore());
        TRY_COMPARE(device.registered.size(), 1);
        const QString cid = device.registered[0][0].toString();
        // No service: as if in the foreground.
        send(cid, page, u"1"_s);
        TRY_COMPARE(device.payloads(), QStringList {page});

        NotificationService service;
        send(cid, page + u"&2"_s, u"2"_s);
        send(cid, page + u"&3"_s, u"3"_s);
        TRY_COMPARE(service.shown.size(), 2);
        QCOMPARE(service.shown[0], u"学校|&lt;b&gt;|default"_s);
        Q_EMIT service.NotificationClosed(1, 2);
        Q_EMIT service.ActionInvoked(1, u"default"_s);
        Q_EMIT service.ActionInvoked(99, u"default"_s);
        Q_EMIT service.ActionInvoked(2, u"default"_s);
        Q_EMIT service.ActionInvoked(2, u"default"_s);
        send(cid, page, u"4"_s);
        TRY_COMPARE(service.shown.size(), 3);
        QCOMPARE(device.tapped.size(), 1);
        QCOMPARE(device.tapped[0][0].toMap()[u"payload"_s].toString(), page + u"&3"_s);
        QCOMPARE(device.presented.size(), 1);
    }

    void whatWasSentMeanwhileComesOnce()
    {
        comeToTheForeground();
        const QString store = freshStore();
        QString cid;
        {
            Client first(m_broker, store);
            QCOMPARE(first.registered.size(), 0);
            TRY_COMPARE(first.registered.size(), 1);
            cid = first.registered[0][0].toString();
            QCOMPARE(cid.size(), 32);
            send(cid, page, u"1"_s);
            TRY_COMPARE(first.presented.size(), 1);
            QCOMPARE(first.payloads(), QStringList {page});
            // Started again it is there already, and says so once more.
            first.client.startSdk(appId, appKey, appSecret);
            TRY_COMPARE(first.registered.size(), 2);
        }
        send(cid, page + u"&off"_s, u"2"_s);
        {
            Client second(m_broker, store);
            TRY_COMPARE(second.presented.size(), 1);
            QCOMPARE(second.payloads(), QStringList {page + u"&off"_s});
            QCOMPARE(second.registered[0][0].toString(), cid);
        }
        // As after a life that ended before the service heard of its thanks.
        send(cid, page + u"&off"_s, u"2"_s);
        send(cid, page + u"&last"_s, u"3"_s);
        Client third(m_broker, store);
        TRY_COMPARE(third.payloads().value(third.payloads().size() - 1), page + u"&last"_s);
        QCOMPARE(third.presented.size(), 1);
    }

    void aMessageWithoutAPageIsShownAndOpensNothing()
    {
        comeToTheForeground();
        NotificationService service;
        Client device(m_broker, freshStore());
        TRY_COMPARE(device.registered.size(), 1);
        const QString cid = device.registered[0][0].toString();
        for (const QString &raw :
            {uR"({"title":"放假","body":"周一"})"_s, uR"({"body":"周二","payload":""})"_s})
            control(u"push"_s, {{u"to"_s, cid}, {u"raw"_s, raw}});
        TRY_COMPARE(service.shown, (QStringList {u"放假|周一|default"_s, u"学校|周二|default"_s}));
        Q_EMIT service.ActionInvoked(1, u"default"_s);
        TRY_COMPARE(device.tapped.size(), 1);
        QVERIFY(!device.tapped[0][0].toMap().contains(u"payload"_s));
        QCOMPARE(device.presented.size(), 0);
    }

    void aLostBrokerIsFoundAgain()
    {
        Client device(m_broker, freshStore());
        TRY_COMPARE(device.registered.size(), 1);
        control(u"broker"_s, {{u"running"_s, false}});
        TRY_COMPARE(device.queue.waiting(), 1);
        // What is lost in the middle is no failed registration; only who starts anew is told.
        QCOMPARE(device.failed.size(), 0);
        device.client.startSdk(appId, appKey, appSecret);
        TRY_COMPARE(device.failed.size(), 1);
        control(u"broker"_s, {{u"running"_s, true}});
        device.queue.advance(2s);
        TRY_COMPARE(device.registered.size(), 2);
        send(device.registered[1][0].toString(), page, u"1"_s);
        TRY_COMPARE(device.payloads(), QStringList {page});
    }

    void dropsWhatIsNoMessage()
    {
        Client device(m_broker, freshStore());
        TRY_COMPARE(device.registered.size(), 1);
        const QString cid = device.registered[0][0].toString();
        const QStringList bad {u""_s, u"hello"_s, u"{\"payload\":"_s, u"[]"_s, u"{}"_s,
            u"{\"payload\":7}"_s, u"{\"payload\":\"\"}"_s, u"{\"payload\":\"no url at all\"}"_s,
            u"{\"payload\":\"https:\"}"_s, u"{\"payload\":\"javascript:alert(1)\"}"_s,
            u"{\"payload\":\"file:///etc/passwd\"}"_s,
            u"{\"payload\":\"https://x/%1\"}"_s.arg(QString(70'000, u'a'))};
        for (const QString &raw : bad) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a push message was dropped"_s));
            control(u"push"_s, {{u"to"_s, cid}, {u"raw"_s, raw}});
        }
        send(cid, page, u"1"_s);
        TRY_COMPARE(device.presented.size(), 1);
        QCOMPARE(device.payloads(), QStringList {page});
    }

    void connectsOnlyWhereItMay_data()
    {
        QTest::addColumn<QString>("broker");
        QTest::addColumn<QString>("secret");
        QTest::addColumn<bool>("withAuthority");
        QTest::addColumn<bool>("may");
        QTest::newRow("known authority") << m_encryptedBroker << appSecret << true << true;
        QTest::newRow("unknown authority") << m_encryptedBroker << appSecret << false << false;
        QTest::newRow("wrong secret") << m_broker << u"x"_s << false << false;
        const QString unencrypted = QString(m_encryptedBroker).replace(u"mqtts"_s, u"mqtt"_s);
        QTest::newRow("encryption left out") << unencrypted << appSecret << true << false;
        QTest::newRow("none") << QString() << appSecret << false << false;
    }

    void connectsOnlyWhereItMay()
    {
        QFETCH(QString, broker);
        QFETCH(QString, secret);
        QFETCH(bool, withAuthority);
        QFETCH(bool, may);
        Client device(broker, freshStore(),
            withAuthority ? m_folder.filePath(u"ca.pem"_s) : QString(), secret);
        TRY_VERIFY(device.registered.size() + device.failed.size() > 0);
        QCOMPARE(device.registered.size() > 0, may);
        QCOMPARE(device.failed.size() > 0, !may);
    }

private:
    void comeToTheForeground()
    {
        m_window.show();
        m_window.requestActivate();
        TRY_COMPARE(QGuiApplication::applicationState(), Qt::ApplicationActive);
    }

    void control(const QString &what, const QJsonObject &body)
    {
        m_sandbox.control(u"_control/"_s + what, QJsonDocument(body).toJson());
    }
    void send(const QString &to, const QString &payload, const QString &id)
    {
        control(u"push"_s,
            {{u"to"_s, to}, {u"payload"_s, payload}, {u"id"_s, id}, {u"body"_s, u"<b>"_s}});
    }
    QString freshStore() { return m_folder.filePath(u"push%1.ini"_s.arg(++m_stores)); }

    QTemporaryDir m_folder;
    PrivateBus m_bus;
    PlatformProcess m_sandbox;
    QString m_broker;
    QString m_encryptedBroker;
    QWindow m_window;
    int m_stores = 0;
};

QTEST_MAIN(PushTest)
#include "PushTest.moc"
