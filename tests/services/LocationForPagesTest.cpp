#include "platform/PositioningLocationManager.h"
#include "services/LocationForPages.h"
#include "support/ManualMainQueue.h"
#include "support/Patience.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class LocationForPagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheAnswer_data()
    {
        QTest::addColumn<bool>("located");
        QTest::addColumn<bool>("failed");
        QTest::addColumn<QString>("json");
        const QString place = u"'latitude': '24.479800', 'lontitude': '118.089412'}}"_s;
        QTest::newRow("all") << true << false
                             << u"{'code': '200', 'msg': '获取成功', 'data': {'addr': "
                                "'中国(null)厦门市(null)软件园二期A1', "_s
                + place;
        QTest::newRow("no address") << true << true
                                    << u"{'code': '200', 'msg': '地址查询失败', 'data': {'addr': "
                                       "'(null)(null)(null)(null)(null)(null)', "_s
                + place;
        QTest::newRow("nothing") << false << true
                                 << u"{'code': '-1', 'msg': '地址查询失败', 'data': {}}"_s;
    }

    void writesTheAnswer()
    {
        QFETCH(const bool, located);
        QFETCH(const bool, failed);
        QFETCH(QString, json);
        std::optional<Location> location;
        std::optional<LocationReGeocode> address;
        std::optional<LocationError> error;
        if (located)
            location = Location {24.4798, 118.0894123};
        if (located && !failed)
            address
                = LocationReGeocode {u"中国"_s, {}, u"厦门 市"_s, {}, u"软件园二期"_s, u" A 1"_s};
        if (failed)
            error = LocationError {LocationError::ReGeocodeFailed, u"地址查询失败"_s};
        const QString text = LocationForPages::answer(location, address, error);
        QCOMPARE(QJsonDocument::fromJson(text.toUtf8()),
            QJsonDocument::fromJson(json.replace(u'\'', u'"').toUtf8()));
        QVERIFY(text.contains(u"\n    \"code\""_s));
    }

    void eachQuestionIsAnsweredLater()
    {
        ManualMainQueue queue;
        QNetworkAccessManager network;
        PositioningLocationManager none(&queue, &network, {}, {u"no such source"_s, {}});
        LocationForPages pages(&none);
        QSignalSpy answers(&pages, &LocationForPages::onGetBDLocation);
        pages.initLocation();
        pages.getLocation();
        pages.getLocation();
        QCOMPARE(answers.size(), 0);
        TRY_COMPARE(answers.size(), 2);
        QVERIFY(answers[1][0].toString().contains(u"\"-1\""_s));
    }
};

QTEST_GUILESS_MAIN(LocationForPagesTest)
#include "LocationForPagesTest.moc"
