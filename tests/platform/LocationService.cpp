#include "LocationService.h"

#include "support/Patience.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusObjectPath>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral("/org/freedesktop/GeoClue2");
const QByteArray roleArgument = "--location-service";

void tell(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

QDBusObjectPath clientPath()
{
    return QDBusObjectPath(folder + u"/Client/1"_s);
}

class Place : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.GeoClue2.Location")
    Q_PROPERTY(double Latitude MEMBER latitude)
    Q_PROPERTY(double Longitude MEMBER longitude)
    Q_PROPERTY(double Accuracy MEMBER accuracy)
    Q_PROPERTY(double Altitude MEMBER unknown)
    Q_PROPERTY(double Speed MEMBER speed)
    Q_PROPERTY(double Heading MEMBER speed)

public:
    using QObject::QObject;
    double latitude = 24.4798;
    double longitude = 118.0894;
    double accuracy = 20;
    double unknown = -1.7976931348623157e308;
    double speed = -1;
};

class Client : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.GeoClue2.Client")
    Q_PROPERTY(QDBusObjectPath Location MEMBER m_location)
    Q_PROPERTY(uint DistanceThreshold MEMBER m_number)
    Q_PROPERTY(uint TimeThreshold MEMBER m_number)
    Q_PROPERTY(QString DesktopId MEMBER m_desktopId)
    Q_PROPERTY(uint RequestedAccuracyLevel MEMBER m_accuracy)
    Q_PROPERTY(bool Active MEMBER m_active)

public:
    explicit Client(LocationService::Behaviour behaviour)
        : m_behaviour(behaviour)
    {
    }

public Q_SLOTS:
    void Start()
    {
        tell(QByteArray::number(m_accuracy));
        if (m_behaviour == LocationService::Behaviour::Denies || m_desktopId.isEmpty())
            return sendErrorReply(QDBusError::AccessDenied, u"not for you"_s);
        m_active = true;
        if (m_behaviour == LocationService::Behaviour::StaysSilent)
            return;
        const QDBusObjectPath former = std::exchange(m_location, place());
        Q_EMIT LocationUpdated(former, m_location);
    }
    void Stop() { m_active = false; }

Q_SIGNALS:
    void LocationUpdated(const QDBusObjectPath &former, const QDBusObjectPath &present);

private:
    static QDBusObjectPath place() { return QDBusObjectPath(folder + u"/Location/1"_s); }

    LocationService::Behaviour m_behaviour;
    QDBusObjectPath m_location {u"/"_s};
    QString m_desktopId;
    uint m_number = 0;
    uint m_accuracy = 0;
    bool m_active = false;
};

class Manager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.GeoClue2.Manager")
    Q_PROPERTY(bool InUse MEMBER m_inUse)

public:
    using QObject::QObject;

public Q_SLOTS:
    QDBusObjectPath GetClient() { return clientPath(); }
    QDBusObjectPath CreateClient() { return clientPath(); }
    void DeleteClient(const QDBusObjectPath &) { }

private:
    bool m_inUse = false;
};

}

LocationService::LocationService(Behaviour behaviour)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(),
        {QString::fromLatin1(roleArgument), QString::number(int(behaviour))});
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patienceMs)) { }
    if (m_process.readLine().trimmed() != "ready")
        qFatal("no location service");
}

LocationService::~LocationService()
{
    m_process.kill();
    m_process.waitForFinished();
}

int LocationService::waitForStart()
{
    [&] { TRY_VERIFY(m_process.canReadLine()); }();
    return m_process.readLine().toInt();
}

bool LocationService::isWanted(int argc, char **argv)
{
    return argc == 3 && argv[1] == roleArgument;
}

int LocationService::run(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QDBusConnection bus = QDBusConnection::systemBus();
    const auto all = QDBusConnection::ExportAllContents;
    Manager manager;
    Client client {Behaviour(std::atoi(argv[2]))};
    Place place;
    bus.registerObject(folder + u"/Manager"_s, &manager, all);
    bus.registerObject(clientPath().path(), &client, all);
    bus.registerObject(folder + u"/Location/1"_s, &place, all);
    if (!bus.registerService(u"org.freedesktop.GeoClue2"_s))
        qFatal("no location service: %s", qPrintable(bus.lastError().message()));
    tell("ready");
    return QCoreApplication::exec();
}

#include "LocationService.moc"
