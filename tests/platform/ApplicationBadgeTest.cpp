#include "platform/ApplicationBadge.h"

#include "PrivateBus.h"

#include <QDBusConnection>
#include <QTest>
#include <QVariantMap>

using namespace Qt::StringLiterals;

//! A launcher as the desktop's: it listens for the entries' updates.
class Launcher : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void update(const QString &application, const QVariantMap &properties)
    {
        updates.append({application, properties});
    }

public:
    QList<std::pair<QString, QVariantMap>> updates;
};

class ApplicationBadgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheLauncher_data();
    void tellsTheLauncher();
};

void ApplicationBadgeTest::tellsTheLauncher_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("visible");
    QTest::newRow("some") << 12 << true;
    QTest::newRow("none") << 0 << false;
}

void ApplicationBadgeTest::tellsTheLauncher()
{
    QFETCH(int, number);
    QFETCH(bool, visible);
    auto bus = QDBusConnection::connectToBus(
        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"launcher"_s);
    Launcher launcher;
    QVERIFY(bus.connect({}, {}, u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s, &launcher,
        SLOT(update(QString, QVariantMap))));

    ApplicationBadge(u"vant-student.desktop"_s).setNumber(number);
    QTRY_COMPARE(launcher.updates.size(), 1);
    const auto &[application, properties] = launcher.updates.constFirst();
    QCOMPARE(application, u"application://vant-student.desktop"_s);
    QCOMPARE(properties.value(u"count"_s), QVariant(qlonglong(number)));
    QCOMPARE(properties.value(u"count-visible"_s), QVariant(visible));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const PrivateBus bus;
    ApplicationBadgeTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ApplicationBadgeTest.moc"
