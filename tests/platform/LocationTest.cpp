#include "LocationService.h"
#include "PrivateBus.h"
#include "platform/PositioningLocationManager.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Answer
{
    std::optional<Location> location;
    std::optional<LocationReGeocode> reGeocode;
    std::optional<LocationError> error;
};

QByteArray sentence(const QByteArray &content)
{
    quint8 sum = 0;
    for (const char c : content)
        sum ^= quint8(c);
    return '$' + content + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper()
        + "\r\n";
}

const QString mapKey = QStringLiteral("3c9e0b7d51f6a2e84c07d9b3a6e5f201");

}

//! Positions of a recorded receiver and of a location service on a bus, and the addresses that the
//! school platform's map gives them.
class LocationTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    PlatformProcess m_sandbox;
    QNetworkAccessManager m_network;
    ManualMainQueue m_queue;
    QList<Answer> m_answers;

    std::unique_ptr<PositioningLocationManager> manager(
        const PositioningLocationManager::Provider &provider)
    {
        auto made = std::make_unique<PositioningLocationManager>(
            &m_queue, &m_network, m_sandbox.address() + u"map/regeo"_s, provider);
        made->setEnableHTTPS(true);
        made->setApiKey(mapKey);
        made->updatePrivacy(true, true, true);
        return made;
    }

    PositioningLocationManager::Provider recording(const QByteArray &sentences)
    {
        QFile file(m_folder.filePath(u"track.nmea"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(sentences) != sentences.size())
            qFatal("%s", qPrintable(file.errorString()));
        return {u"nmea"_s, {{u"nmea.source"_s, QUrl::fromLocalFile(file.fileName())}}};
    }

    void request(LocationManager &manager)
    {
        manager.requestLocationWithReGeocode(
            [this](const auto &location, const auto &reGeocode, const auto &error) {
                m_answers << Answer {location, reGeocode, error};
            });
    }

private Q_SLOTS:
    void init()
    {
        // Qt hides its plug-ins from what it takes for its own tests.
        qunsetenv("QT_QTESTLIB_RUNNING");
        m_answers.clear();
        m_sandbox.reset();
    }

    void aRecordedTrackIsAPlaceWithAnAddress()
    {
        const auto source = manager(
            recording(sentence("GPRMC,083000.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A")
                + sentence("GPRMC,083001.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A")));
        request(*source);
        QVERIFY(m_answers.isEmpty());
        TRY_COMPARE(m_answers.size(), 1);
        QVERIFY(!m_answers[0].error);
        QVERIFY(std::abs(m_answers[0].location->latitude - 39.9087) < 1e-6);
        QVERIFY(std::abs(m_answers[0].location->longitude - 116.3975) < 1e-6);
        QCOMPARE(m_answers[0].reGeocode->province, u"北京市"_s);
        // The map writes an empty list for the city of a municipality.
        QVERIFY(m_answers[0].reGeocode->city.isNull());
        QCOMPARE(m_answers[0].reGeocode->aoiName, u"天安门广场"_s);
        const TracedRequest asked = m_sandbox.takeRequests().constLast();
        QCOMPARE(asked.value(u"location"_s), u"116.397500,39.908700"_s);
    }

    void theLocationServiceAnswersEachRequest()
    {
        LocationService service(LocationService::Behaviour::Tells);
        const auto source = manager({u"geoclue2"_s, {}});
        request(*source);
        request(*source);
        // Of what the service knows, the exact position.
        QCOMPARE(service.waitForStart(), 8);
        TRY_COMPARE(m_answers.size(), 2);
        for (const Answer &answer : std::as_const(m_answers)) {
            QCOMPARE(answer.location->latitude, 24.4798);
            QCOMPARE(answer.reGeocode->district, u"思明区"_s);
        }
        request(*source);
        TRY_COMPARE(m_answers.size(), 3);
        m_queue.advance(11s);
        QCOMPARE(m_answers.size(), 3);
    }

    void noFixIsAnError_data()
    {
        QTest::addColumn<LocationService::Behaviour>("behaviour");
        QTest::addColumn<bool>("agreed");
        QTest::addColumn<int>("code");
        using Behaviour = LocationService::Behaviour;
        QTest::newRow("silent") << Behaviour::StaysSilent << true << int(LocationError::TimeOut);
        QTest::newRow("denied") << Behaviour::Denies << true << int(LocationError::Denied);
        QTest::newRow("not agreed") << Behaviour::Tells << false << int(LocationError::Denied);
    }

    void noFixIsAnError()
    {
        QFETCH(const LocationService::Behaviour, behaviour);
        QFETCH(const bool, agreed);
        QFETCH(const int, code);
        LocationService service(behaviour);
        const auto source = manager({u"geoclue2"_s, {}});
        source->updatePrivacy(true, true, agreed);
        request(*source);
        if (behaviour == LocationService::Behaviour::StaysSilent) {
            service.waitForStart();
            m_queue.advance(9999ms);
            QVERIFY(m_answers.isEmpty());
            m_queue.advance(1ms);
        }
        TRY_COMPARE(m_answers.size(), 1);
        QVERIFY(!m_answers[0].location);
        QCOMPARE(int(m_answers[0].error->code), code);
    }

    void aPlaceWithoutAnAddressIsBoth_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonObject>("fault");
        const QString path = u"/map/regeo"_s;
        QTest::newRow("wrong key") << u"0"_s << QJsonObject();
        QTest::newRow("down") << mapKey << QJsonObject {{u"path"_s, path}, {u"status"_s, 503}};
        QTest::newRow("no JSON") << mapKey << QJsonObject {{u"path"_s, path}, {u"body"_s, u"<"_s}};
        QTest::newRow("late") << mapKey << QJsonObject {{u"path"_s, path}, {u"delay_ms"_s, 3000}};
    }

    void aPlaceWithoutAnAddressIsBoth()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonObject, fault);
        if (!fault.isEmpty())
            m_sandbox.addFault(fault);
        LocationService service(LocationService::Behaviour::Tells);
        const auto source = manager({u"geoclue2"_s, {}});
        source->setApiKey(key);
        source->setReGeocodeTimeout(500ms);
        request(*source);
        TRY_COMPARE(m_answers.size(), 1);
        QVERIFY(m_answers[0].location);
        QVERIFY(!m_answers[0].reGeocode);
        QCOMPARE(m_answers[0].error->code, LocationError::ReGeocodeFailed);
    }
};

int main(int argc, char **argv)
{
    if (LocationService::isWanted(argc, argv))
        return LocationService::run(argc, argv);
    QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(u"vant-student"_s);
    PrivateBus bus;
    LocationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "LocationTest.moc"
