#include "platform/http/HTTPNetwork.h"
#include "platform/services/PositioningLocationManager.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QFile>
#include <QTimer>
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

const QByteArray fixes = "$GPRMC,083000.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A*54\r\n"
                         "$GPRMC,083001.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A*55\r\n";
const QString mapKey = QStringLiteral("3c9e0b7d51f6a2e84c07d9b3a6e5f201");

}

//! Positions of a recorded receiver, and the addresses that the school platform's map gives them.
class LocationTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    PlatformProcess m_sandbox;
    HTTPNetwork m_network;
    ManualMainQueue m_queue;

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

    static LocationManager::Completion into(const std::function<void(const Answer &)> &then)
    {
        return [then](const auto &location, const auto &reGeocode, const auto &error) {
            then({location, reGeocode, error});
        };
    }

private Q_SLOTS:
    // Qt hides its plug-ins from what it takes for its own tests.
    void initTestCase() { qunsetenv("QT_QTESTLIB_RUNNING"); }

    void aRecordedTrackIsAPlaceWithAnAddress()
    {
        const auto source = manager(recording(fixes));
        const auto [location, reGeocode, error] = answerOf<Answer>(
            [&](const auto &then) { source->requestLocationWithReGeocode(into(then)); });
        QVERIFY(!error);
        QVERIFY(std::abs(location->latitude - 39.9087) < 1e-6);
        QVERIFY(std::abs(location->longitude - 116.3975) < 1e-6);
        QCOMPARE(reGeocode->province, u"北京市"_s);
        // The map writes an empty list for the city of a municipality.
        QVERIFY(reGeocode->city.isNull());
        QCOMPARE(reGeocode->aoiName, u"天安门广场"_s);
        const TracedRequest asked = m_sandbox.takeRequests().constLast();
        QCOMPARE(asked.value(u"location"_s), u"116.397500,39.908700"_s);
    }

    void noFixIsAnError()
    {
        for (const bool isRefused : {false, true}) {
            const auto source = manager(recording(isRefused ? fixes : QByteArray()));
            source->updatePrivacy(true, true, !isRefused);
            const auto answer = answerOf<Answer>([&](const auto &then) {
                source->requestLocationWithReGeocode(into(then));
                QTimer::singleShot(0, this, [this] { m_queue.advance(10s); });
            });
            QVERIFY(!answer.location);
            QCOMPARE(
                answer.error->code, isRefused ? LocationError::Denied : LocationError::TimeOut);
        }
    }
};

QTEST_MAIN(LocationTest)
#include "LocationTest.moc"
