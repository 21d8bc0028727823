#include "services/PushRegistration.h"

#include "model/LoginModel.h"
#include "platform/NotificationCenter.h"
#include "platform/PushClient.h"
#include "support/Patience.h"

#include <QSignalSpy>
#include <QTemporaryDir>

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

class PushRegistrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheClientIdOverFailures();
    void postsNotifications();

private:
    const QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(u"settings.ini"_s);
    UserDefaults m_defaults {m_file};
    LoginModel m_model {&m_defaults};
    NotificationCenter m_notifications;
    ScriptedPushClient m_client;
    PushRegistration m_registration {&m_client,
        {.broker = {}, .appId = u"id"_s, .appKey = u"key"_s, .appSecret = u"secret"_s}, &m_model,
        &m_defaults, &m_notifications};
    QSignalSpy m_posted {&m_notifications, &NotificationCenter::posted};
};

void PushRegistrationTest::keepsTheClientIdOverFailures()
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

void PushRegistrationTest::postsNotifications()
{
    const QVariantMap userInfo {{u"payload"_s, u"https://p/"_s}};
    m_model.messageCount = 3;
    Q_EMIT m_client.didReceiveNotification(userInfo);
    QVERIFY(m_registration.isAppBackground);
    QCOMPARE(m_model.messageCount, 3);
    QCOMPARE(m_posted.takeFirst().first(), u"backGeTuiPushLoadNewWeb"_s);

    Q_EMIT m_client.willPresentNotification(userInfo);
    QVERIFY(!m_registration.isAppBackground);
    QCOMPARE(m_model.messageCount, 0);
    // Nobody would open the page yet.
    QCOMPARE(m_posted.size(), 0);
    // Neither does anybody in this run.
    NotificationCenter later;
    QSignalSpy postedLater(&later, &NotificationCenter::posted);
    UserDefaults kept(m_file);
    PushRegistration nextRun(&m_client, {}, &m_model, &kept, &later);
    later.addObserver(u"GeTuiPushLoadNewWeb"_s, this, [](const QVariant &) {});
    TRY_COMPARE(postedLater.size(), 1);
    QCOMPARE(postedLater.first()[1].value<QVariant>().toMap(), userInfo);
    QVERIFY(!UserDefaults(m_file).objectForKey(u"PushWaiting"_s).isValid());

    QObject home;
    m_notifications.addObserver(u"GeTuiPushLoadNewWeb"_s, &home, [](const QVariant &) {});
    QCOMPARE(m_posted.size(), 0);
    TRY_COMPARE(m_posted.size(), 1);
    QCOMPARE(m_posted.first().first(), u"GeTuiPushLoadNewWeb"_s);
    QCOMPARE(m_posted.first()[1].value<QVariant>().toMap(), userInfo);
}

QTEST_GUILESS_MAIN(PushRegistrationTest)
#include "PushRegistrationTest.moc"
