#include "services/PushRegistration.h"

#include "model/LoginModel.h"
#include "platform/NotificationCenter.h"
#include "platform/UnavailablePushClient.h"

#include <QTemporaryDir>
#include <QTest>

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
    void resetBadge() override { calls << u"resetBadge"_s; }

    QStringList calls;
};

const QString outcomeKey = QStringLiteral("GTPushCid");

}

class PushRegistrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void registersAtLaunch();
    void storesTheClientId();
    void marksAFailureAndKeepsTheClientId();
    void aDeviceWithoutPushFailsLater();
    void theNextIdAfterARestartStopsTheTimer();
    void postsNotifications_data();
    void postsNotifications();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<LoginModel> m_model;
    std::unique_ptr<NotificationCenter> m_notifications;
    std::unique_ptr<ScriptedPushClient> m_client;
    std::unique_ptr<PushRegistration> m_registration;
    QList<std::pair<QString, QVariant>> m_posted;
};

void PushRegistrationTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.ini"_s));
    m_model = std::make_unique<LoginModel>(m_defaults.get());
    m_notifications = std::make_unique<NotificationCenter>();
    m_client = std::make_unique<ScriptedPushClient>();
    DeploymentConfiguration::Push credentials;
    credentials.appId = u"id"_s;
    credentials.appKey = u"key"_s;
    credentials.appSecret = u"secret"_s;
    m_registration = std::make_unique<PushRegistration>(m_client.get(), credentials, m_model.get(),
        m_defaults.get(), m_notifications.get());
    m_posted.clear();
    connect(m_notifications.get(), &NotificationCenter::posted, this,
        [this](const QString &name, const QVariant &object) { m_posted.append({name, object}); });
}

void PushRegistrationTest::registersAtLaunch()
{
    m_registration->start();
    QCOMPARE(m_client->calls, (QStringList {u"start id key secret"_s, u"register 7"_s}));
    m_registration->resetBadge();
    QCOMPARE(m_client->calls.constLast(), u"resetBadge"_s);
}

void PushRegistrationTest::storesTheClientId()
{
    Q_EMIT m_client->didRegisterClient(u"cid-1"_s);
    const UserDefaults restarted(m_folder->filePath(u"settings.ini"_s));
    QCOMPARE(restarted.stringForKey(u"cid"_s), u"cid-1"_s);
    QCOMPARE(restarted.stringForKey(outcomeKey), u"getCidSuccess"_s);
    QVERIFY(m_posted.isEmpty());
}

void PushRegistrationTest::marksAFailureAndKeepsTheClientId()
{
    m_model->setC_id(u"of an earlier run"_s);
    Q_EMIT m_client->didOccurError(u"no network"_s);
    const UserDefaults restarted(m_folder->filePath(u"settings.ini"_s));
    QCOMPARE(restarted.stringForKey(outcomeKey), u"getCidFailed"_s);
    QCOMPARE(m_model->c_id(), u"of an earlier run"_s);
    QVERIFY(m_posted.isEmpty());
}

void PushRegistrationTest::aDeviceWithoutPushFailsLater()
{
    UnavailablePushClient none;
    PushRegistration registration(
        &none, {}, m_model.get(), m_defaults.get(), m_notifications.get());
    registration.start();
    QVERIFY(m_defaults->stringForKey(outcomeKey).isNull());
    QTRY_COMPARE(m_defaults->stringForKey(outcomeKey), u"getCidFailed"_s);
    QVERIFY(m_model->c_id().isNull());
}

void PushRegistrationTest::theNextIdAfterARestartStopsTheTimer()
{
    m_registration->start();
    m_client->calls.clear();
    m_registration->bindGeTuiAgain();
    // The permission is asked for at launch only.
    QCOMPARE(m_client->calls, QStringList {u"start id key secret"_s});
    QVERIFY(m_registration->isBindGeTuiAgain);

    Q_EMIT m_client->didOccurError(u"still none"_s);
    QVERIFY(m_posted.isEmpty());
    Q_EMIT m_client->didRegisterClient(u"cid-1"_s);
    QCOMPARE(m_posted.size(), 1);
    QCOMPARE(m_posted.constFirst().first, u"STOPNSTimer"_s);
    QVERIFY(!m_posted.constFirst().second.isValid());
    QCOMPARE(m_defaults->stringForKey(outcomeKey), u"getCidSuccess"_s);
}

void PushRegistrationTest::postsNotifications_data()
{
    QTest::addColumn<bool>("tapped");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("messageCount");
    QTest::newRow("in the foreground") << false << u"GeTuiPushLoadNewWeb"_s << 0;
    QTest::newRow("tapped") << true << u"backGeTuiPushLoadNewWeb"_s << 3;
}

void PushRegistrationTest::postsNotifications()
{
    QFETCH(bool, tapped);
    const QVariantMap userInfo {{u"payload"_s, u"https://p/"_s}};
    m_model->messageCount = 3;
    m_registration->isAppBackground = !tapped;
    if (tapped)
        Q_EMIT m_client->didReceiveNotification(userInfo);
    else
        Q_EMIT m_client->willPresentNotification(userInfo);

    QCOMPARE(m_posted.size(), 1);
    QTEST(m_posted.constFirst().first, "name");
    QCOMPARE(m_posted.constFirst().second.toMap(), userInfo);
    QCOMPARE(m_registration->isAppBackground, tapped);
    QTEST(m_model->messageCount, "messageCount");
}

QTEST_GUILESS_MAIN(PushRegistrationTest)
#include "PushRegistrationTest.moc"
