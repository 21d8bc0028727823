#include "platform/services/PositioningLocationManager.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QFile>
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

QByteArray fixes()
{
    return sentence("GPRMC,083000.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A")
        + sentence("GPRMC,083001.00,A,3954.522,N,11623.850,E,000.0,000.0,231126,,,A");
}

const QString mapKey = QStringLiteral("3c9e0b7d51f6a2e84c07d9b3a6e5f201");

}

//! Positions of a recorded receiver, and the addresses that the school platform's map gives them.
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
        const auto source = manager(recording(fixes()));
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

    void noFixIsAnError()
    {
        const auto silent = manager(recording({}));
        request(*silent);
        m_queue.advance(10s);
        TRY_COMPARE(m_answers.size(), 1);
        QVERIFY(!m_answers[0].location);
        QCOMPARE(m_answers[0].error->code, LocationError::TimeOut);

        const auto refused = manager(recording(fixes()));
        refused->updatePrivacy(true, true, false);
        request(*refused);
        TRY_COMPARE(m_answers.size(), 2);
        QVERIFY(!m_answers[1].location);
        QCOMPARE(m_answers[1].error->code, LocationError::Denied);
    }
};

QTEST_MAIN(LocationTest)
#include "LocationTest.moc"
