#include "NotificationService.h"
#include "PrivateBus.h"
#include "platform/desktop/ApplicationBadge.h"
#include "platform/push/DesktopNotifications.h"
#include "platform/push/MqttPushClient.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QJsonDocument>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// What the sandbox's configuration says.
const QString appId = QStringLiteral("Sb7xQeLw2RkM9tYcVn4HgD");
const QString appKey = QStringLiteral("Sb3kUyPz8VdN5wJqFa6TsB");
const QString appSecret = QStringLiteral("Sb9gCmXr4HoL7eKtZi2WvY");
const QString page = QStringLiteral("https://portal.example/news?id=7");

//! One life of the push client, with all that it has reported.
struct Client
{
    explicit Client(const MqttPushClient::Settings &settings, const QString &secret = appSecret)
        : client(settings, &queue, &notifications, &badge)
    {
        client.registerRemoteNotification(
            PushClient::Badge | PushClient::Sound | PushClient::Alert);
        client.startSdk(appId, appKey, secret);
    }

    //! Waits for its registration.
    QString cid() const
    {
        [&] { TRY_VERIFY(!registered.isEmpty()); }();
        return registered.value(0).value(0).toString();
    }
    static QStringList payloadsOf(const QSignalSpy &told)
    {
        QStringList list;
        for (const QList<QVariant> &call : told)
            list << call[0].toMap().value(u"payload"_s, u"none"_s).toString();
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
        Client device(fresh());
        // No service: as if in the foreground.
        send(device.cid(), page, u"1"_s);
        TRY_COMPARE(Client::payloadsOf(device.presented), QStringList {page});

        NotificationService service;
        send(device.cid(), page + u"&2"_s, u"2"_s);
        send(device.cid(), page + u"&3"_s, u"3"_s);
        TRY_COMPARE(service.shown.size(), 2);
        QCOMPARE(service.shown[0], u"学校|&lt;b&gt;|default"_s);
        Q_EMIT service.NotificationClosed(1, 2);
        for (const uint id : {1, 99, 2, 2})
            Q_EMIT service.ActionInvoked(id, u"default"_s);
        send(device.cid(), page, u"4"_s);
        TRY_COMPARE(service.shown.size(), 3);
        QCOMPARE(Client::payloadsOf(device.tapped), QStringList {page + u"&3"_s});

        // A message without a page is shown and opens nothing.
        sendRaw(device.cid(), uR"({"title":"放假","body":"周一"})"_s);
        sendRaw(device.cid(), uR"({"body":"周二","payload":""})"_s);
        TRY_COMPARE(
            service.shown.mid(3), (QStringList {u"放假|周一|default"_s, u"学校|周二|default"_s}));
        Q_EMIT service.ActionInvoked(4, u"default"_s);
        TRY_COMPARE(Client::payloadsOf(device.tapped).mid(1), QStringList {u"none"_s});
        QCOMPARE(device.presented.size(), 1);
    }

    void whatWasSentMeanwhileComesOnce()
    {
        QWindow window;
        window.show();
        window.requestActivate();
        TRY_COMPARE(QGuiApplication::applicationState(), Qt::ApplicationActive);
        const auto store = fresh();
        QString cid;
        {
            Client first(store);
            QCOMPARE(first.registered.size(), 0);
            cid = first.cid();
            QCOMPARE(cid.size(), 32);
            send(cid, page, u"1"_s);
            TRY_COMPARE(Client::payloadsOf(first.presented), QStringList {page});
            // Started again it is there already, and says so once more.
            first.client.startSdk(appId, appKey, appSecret);
            TRY_COMPARE(first.registered.size(), 2);
        }
        send(cid, page + u"&off"_s, u"2"_s);
        {
            Client second(store);
            TRY_COMPARE(Client::payloadsOf(second.presented), QStringList {page + u"&off"_s});
            QCOMPARE(second.cid(), cid);
        }
        // As after a life that ended before the service heard of its thanks.
        send(cid, page + u"&off"_s, u"2"_s);
        send(cid, page + u"&last"_s, u"3"_s);
        Client third(store);
        TRY_COMPARE(Client::payloadsOf(third.presented), QStringList {page + u"&last"_s});
    }

    void aLostBrokerIsFoundAgain()
    {
        Client device(fresh());
        device.cid();
        control(u"broker"_s, {{u"running"_s, false}});
        TRY_COMPARE(device.queue.waiting(), 1);
        // What is lost in the middle is no failed registration; only who starts anew is told.
        QCOMPARE(device.failed.size(), 0);
        device.client.startSdk(appId, appKey, appSecret);
        TRY_COMPARE(device.failed.size(), 1);
        control(u"broker"_s, {{u"running"_s, true}});
        device.queue.advance(2s);
        TRY_COMPARE(device.registered.size(), 2);
        send(device.cid(), page, u"1"_s);
        TRY_COMPARE(Client::payloadsOf(device.presented), QStringList {page});
    }

    void dropsWhatIsNoMessage()
    {
        Client device(fresh());
        for (const QString &raw :
            {u""_s, u"hello"_s, u"{\"payload\":"_s, u"[]"_s, u"{}"_s, u"{\"payload\":7}"_s,
                u"{\"payload\":\"\"}"_s, u"{\"payload\":\"no url at all\"}"_s,
                u"{\"payload\":\"https:\"}"_s, u"{\"payload\":\"javascript:alert(1)\"}"_s,
                u"{\"payload\":\"file:///etc/passwd\"}"_s,
                u"{\"payload\":\"https://x/%1\"}"_s.arg(QString(70'000, u'a'))}) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a push message was dropped"_s));
            sendRaw(device.cid(), raw);
        }
        send(device.cid(), page, u"1"_s);
        TRY_COMPARE(Client::payloadsOf(device.presented), QStringList {page});
    }

    void connectsOnlyWhereItMay()
    {
        const QString unencrypted = QString(m_encryptedBroker).replace(u"mqtts"_s, u"mqtt"_s);
        const QString authority = m_folder.filePath(u"ca.pem"_s), none;
        const std::tuple<QString, QString, QString, bool> rows[] {
            {m_encryptedBroker, authority, appSecret, true},
            {m_encryptedBroker, none, appSecret, false},
            {m_broker, none, u"x"_s, false},
            {unencrypted, authority, appSecret, false},
            {none, none, appSecret, false},
        };
        for (const auto &[broker, authorities, secret, may] : rows) {
            Client device({broker, authorities, fresh().storeFile}, secret);
            TRY_VERIFY(device.registered.size() + device.failed.size() > 0);
            QCOMPARE(device.registered.isEmpty(), !may);
            QCOMPARE(device.failed.isEmpty(), may);
        }
    }

private:
    void control(const QString &what, const QJsonObject &body)
    {
        m_sandbox.control(u"_control/"_s + what, QJsonDocument(body).toJson());
    }
    void send(const QString &to, const QString &payload, const QString &id)
    {
        control(u"push"_s,
            {{u"to"_s, to}, {u"payload"_s, payload}, {u"id"_s, id}, {u"body"_s, u"<b>"_s}});
    }
    void sendRaw(const QString &to, const QString &raw)
    {
        control(u"push"_s, {{u"to"_s, to}, {u"raw"_s, raw}});
    }
    MqttPushClient::Settings fresh()
    {
        return {m_broker, {}, m_folder.filePath(u"push%1.ini"_s.arg(++m_stores))};
    }

    QTemporaryDir m_folder;
    PrivateBus m_bus;
    PlatformProcess m_sandbox;
    QString m_broker;
    QString m_encryptedBroker;
    int m_stores = 0;
};

QTEST_MAIN(PushTest)
#include "PushTest.moc"
