#include "launch/ad/AdResolution.h"
#include "launch/ad/PictureFrames.h"
#include "launch/ad/VANTSplashAdManager.h"
#include "platform/NotificationCenter.h"
#include "session/SessionClient.h"
#include "support/PageServer.h"
#include "support/Patience.h"
#include "support/PlatformProcess.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkDiskCache>
#include <QNetworkReply>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QSize screen {1170, 2532};
constexpr int wholeHuge = 50 * 1024 * 1024;

QByteArray png()
{
    QImage image(200, 400, QImage::Format_RGB32);
    // Noise, or the half of the file would hold all of the picture.
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, QRgb(x * 2654435761u ^ y * 40503u * unsigned(x + 1)));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "png");
    return bytes;
}

}

//! The advertisement over the launch, from the platform's list to its end.
class LaunchAdTest : public QObject
{
    Q_OBJECT

private:
    using Phase = LaunchAd::Phase;

    PlatformProcess m_sandbox;
    PageServer m_pictures;
    std::unique_ptr<SessionClient> m_client;
    std::unique_ptr<NotificationCenter> m_notifications;
    std::unique_ptr<VANTSplashAdManager> m_manager;
    int m_finished = 0;

    LaunchAd *ad() { return m_manager->launchAd(); }
    QNetworkAccessManager *network() { return &m_client->net.network; }

    void launch()
    {
        m_finished = 0;
        m_manager = std::make_unique<VANTSplashAdManager>(&m_client->net.requests, network(),
            &m_client->mainQueue, m_notifications.get(), screen);
        m_manager->setupXHLaunchAd();
        QVERIFY(m_manager->isShowing());
    }

    void list(const QJsonValue &data)
    {
        m_sandbox.setAnswer({{u"start"_s, u"listAd4App"_s}, {u"data"_s, data}});
    }
    void listPicture(const QString &address)
    {
        list(QJsonArray {QJsonObject {{u"img_url"_s, address}}});
    }
    void advance(std::chrono::milliseconds time) { m_client->mainQueue.advance(time); }

private Q_SLOTS:
    void init()
    {
        m_sandbox.reset();
        m_manager.reset();
        m_client = std::make_unique<SessionClient>(m_sandbox.hosts());
        auto *cache = new QNetworkDiskCache(network());
        cache->setCacheDirectory(m_client->net.folder.filePath(u"http"_s));
        network()->setCache(cache);
        m_notifications = std::make_unique<NotificationCenter>();
        m_notifications->addObserver(
            u"xhLaunchAdShowFinish"_s, this, [this](const QVariant &object) {
                QVERIFY(!object.isValid());
                QVERIFY(!m_manager->isShowing());
                ++m_finished;
            });
        m_sandbox.takeRequests();
    }

    void asksForTheScreensPicture_data()
    {
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<QSize>("asked");
        const auto row = [](int width, int height, int askedWidth, int askedHeight) {
            QTest::addRow("%dx%d", width, height)
                << QSize(width, height) << QSize(askedWidth, askedHeight);
        };
        row(640, 960, 640, 960);
        row(641, 960, 1284, 2778);
        for (const QSize &known :
            {QSize(640, 1136), QSize(750, 1334), QSize(1242, 2208), QSize(828, 1792),
                QSize(1125, 2436), QSize(1242, 2688), QSize(1080, 2340), QSize(1170, 2532)})
            row(7, known.height(), known.width(), known.height());
        row(1179, 2556, 1284, 2778);
    }

    void asksForTheScreensPicture()
    {
        QFETCH(const QSize, pixels);
        QTEST(AdResolution::forScreen(pixels), "asked");
    }

    void showsCountsDownFadesAndIsGone()
    {
        // Scheme-relative: "http:" is put before it.
        m_pictures.setPage("/ad.png", png(), "image/png");
        listPicture(m_pictures.url("/ad.png").mid(5));
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
        const auto calls = m_sandbox.takeRequests();
        QCOMPARE(calls.constFirst().value(u"resolution_pixel"_s), u"1170*2532"_s);
        QCOMPARE(calls.constFirst().value(u"terminal"_s), u"ios"_s);
        QStringList said;
        for (int second = 0; second < 3; ++second) {
            said << ad()->skipText();
            ad()->click({100, 100}); // does nothing
            advance(999ms);
            QCOMPARE(ad()->phase(), Phase::Showing);
            advance(1ms);
        }
        QCOMPARE(said, (QStringList {u"跳过 3"_s, u"跳过 2"_s, u"跳过 1"_s}));
        QCOMPARE(ad()->phase(), Phase::Leaving);
        advance(799ms);
        QCOMPARE(m_finished, 0);
        advance(1ms);
        QCOMPARE(ad()->phase(), Phase::Gone);
        advance(1h);
        QCOMPARE(m_finished, 1);
    }

    void skippingLeavesAtOnceAndOnce()
    {
        m_pictures.setPage("/ad.png", png(), "image/png");
        listPicture(m_pictures.url("/ad.png"));
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
        ad()->skip();
        QCOMPARE(ad()->phase(), Phase::Leaving);
        ad()->skip();
        advance(1h);
        QCOMPARE(m_finished, 1);
    }

    void badAnswersEndWithoutWaiting_data()
    {
        QTest::addColumn<QJsonValue>("data");
        QTest::addColumn<QJsonObject>("fault"); //!< of the list, or of the picture
        const auto row
            = [](const char *name, const QJsonValue &data, const QJsonObject &fault = {}) {
                  QTest::newRow(name) << data << fault;
              };
        const auto picture = [](const QJsonValue &address) {
            return QJsonArray {QJsonObject {{u"img_url"_s, address}}};
        };
        const QString still = u"@/images/ad-still.png"_s;
        const QString path = u"/images/ad-still.png"_s;
        row("empty list", QJsonArray());
        row("no list", QJsonObject {{u"img_url"_s, still}});
        row("null", QJsonValue::Null);
        row("not of records", QJsonArray {1, u"x"_s});
        row("no picture", QJsonArray {QJsonObject {{u"link_url"_s, u"http://x/"_s}}});
        row("null picture", picture(QJsonValue::Null));
        row("a number", picture(5));
        row("another scheme", picture(u"httpx://nowhere/"_s));
        row("missing", picture(u"@/images/none.png"_s));
        row("wrong type", picture(u"@/pages/agreement/user.html"_s));
        row("cut", picture(still), {{u"path"_s, path}, {u"cut"_s, true}});
        row("empty picture", picture(still), {{u"path"_s, path}, {u"body"_s, u""_s}});
        row("50 MiB", picture(still), {{u"path"_s, path}, {u"huge"_s, wholeHuge}});
        row("refused list", picture(still), {{u"start"_s, u"listAd4App"_s}, {u"status"_s, 500}});
        row("no JSON", picture(still), {{u"start"_s, u"listAd4App"_s}, {u"body"_s, u"<html>"_s}});
    }

    void badAnswersEndWithoutWaiting()
    {
        QFETCH(QJsonValue, data);
        QFETCH(const QJsonObject, fault);
        QByteArray text = QJsonDocument(QJsonArray {data}).toJson();
        text.replace("@", m_sandbox.address(PlatformProcess::Content).chopped(1).toUtf8());
        list(QJsonDocument::fromJson(text).array().at(0));
        if (!fault.isEmpty())
            m_sandbox.addFault(fault);
        launch();
        TRY_COMPARE(m_finished, 1);
        QCOMPARE(ad()->phase(), Phase::Gone);
        advance(1h);
        QCOMPARE(m_finished, 1);
    }

    void aDamagedPictureIsNotKept()
    {
        const QByteArray whole = png();
        m_pictures.setPage("/ad.png", whole.left(whole.size() / 2), "image/png");
        listPicture(m_pictures.url("/ad.png"));
        launch();
        TRY_COMPARE(m_finished, 1);
        m_pictures.setPage("/ad.png", whole, "image/png");
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
    }

    void goesOnAfterTwoSecondsAndKeepsALatePictureForTheNextLaunch()
    {
        m_sandbox.addFault({{u"path"_s, u"/images/ad-still.png"_s}, {u"delay_ms"_s, 300}});
        const QString address
            = m_sandbox.address(PlatformProcess::Content) + u"images/ad-still.png"_s;
        listPicture(address);
        launch();
        TRY_VERIFY(m_client->net.manager.connectItems().empty());
        advance(1999ms);
        QCOMPARE(m_finished, 0);
        advance(1ms);
        QCOMPARE(m_finished, 1);
        TRY_VERIFY(network()->cache()->metaData(QUrl(address)).isValid());
        QCOMPARE(ad()->phase(), Phase::Gone);

        m_sandbox.addFault({{u"path"_s, u"/images/ad-still.png"_s}, {u"status"_s, 500}});
        launch();
        TRY_COMPARE(ad()->phase(), Phase::Showing);
        QCOMPARE(ad()->picture()->frame().height(), screen.height());
    }

    void whatFailsAfterTheWaitIsNotToldAgain_data()
    {
        QTest::addColumn<QJsonObject>("fault");
        const QString list = u"listAd4App"_s;
        const QString path = u"/images/ad-still.png"_s;
        QTest::newRow("empty list")
            << QJsonObject {{u"start"_s, list}, {u"delay_ms"_s, 300}, {u"body"_s, u"{}"_s}};
        QTest::newRow("missing picture")
            << QJsonObject {{u"path"_s, path}, {u"delay_ms"_s, 300}, {u"status"_s, 404}};
        QTest::newRow("no picture")
            << QJsonObject {{u"path"_s, path}, {u"delay_ms"_s, 300}, {u"body"_s, u"x"_s}};
    }

    void whatFailsAfterTheWaitIsNotToldAgain()
    {
        QFETCH(const QJsonObject, fault);
        listPicture(m_sandbox.address(PlatformProcess::Content) + u"images/ad-still.png"_s);
        m_sandbox.addFault(fault);
        launch();
        advance(2s);
        QCOMPARE(m_finished, 1);
        // Every reply of the network dies when it has been told of.
        TRY_VERIFY(network()->findChildren<QNetworkReply *>().isEmpty()
            && m_client->net.manager.connectItems().empty());
        QCOMPARE(m_finished, 1);
        QCOMPARE(ad()->phase(), Phase::Gone);
    }

    void movesAgainAndAgainOnThePicturesOwnClock()
    {
        QNetworkReply *reply = network()->get(QNetworkRequest(
            QUrl(m_sandbox.address(PlatformProcess::Content) + u"images/ad-animated.gif"_s)));
        TRY_VERIFY(reply->isFinished());
        const QByteArray gif = reply->readAll();
        reply->deleteLater();
        PictureFrames frames(gif, screen);
        QList<QImage> round;
        for (int i = 0; i < 12; ++i) {
            const auto frame = frames.next();
            QVERIFY(frame && frame->delay == 80ms);
            round << frame->image;
        }
        QVERIFY(round[0] != round[1] && round[1] != round[2]);
        for (int i = 0; i < 12; ++i)
            QCOMPARE(frames.next()->image, round[i]);

        LaunchAdPicture picture(&m_client->mainQueue);
        int usable = 0;
        picture.load(gif, screen, [&](bool loaded) { usable += loaded; });
        TRY_COMPARE(usable, 1);
        for (int i = 0; i < 14; ++i) {
            QCOMPARE(picture.frame(), round[i % 12]);
            advance(79ms);
            QCOMPARE(picture.frame(), round[i % 12]);
            advance(1ms);
            TRY_COMPARE(picture.frame(), round[(i + 1) % 12]);
        }
    }
};

QTEST_GUILESS_MAIN(LaunchAdTest)
#include "LaunchAdTest.moc"
