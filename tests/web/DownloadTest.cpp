#include "support/PageServer.h"
#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"

#include <QDir>
#include <QQuickWebEngineProfile>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! Files that pages want kept, from the question to the folder.
class DownloadTest : public QObject
{
    Q_OBJECT

private:
    PageServer m_server;

    QString page(const QByteArray &content)
    {
        m_server.setPage("/page.html", "<!doctype html><meta charset=utf-8>" + content);
        return m_server.url("/page.html");
    }

    QString host() const { return u"127.0.0.1:%1"_s.arg(m_server.port()); }

    //! Everything below the folder for downloads, what is hidden included.
    static QStringList kept(const PageHarness &harness)
    {
        const QDir folder(harness.pageHost.downloadDirectory());
        return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void areTheUsersToAllow_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QByteArray>("content");
        m_server.setPage("/file.bin", QByteArray(2'300'000, 'x'), "application/octet-stream");
        QTest::newRow("file") << "a.href = '/file.bin'"_ba
                              << u"来自 %1：\n作业.bin，2 MB"_s.arg(host())
                              << QByteArray(2'300'000, 'x');
        QTest::newRow("what the page made")
            << "a.href = URL.createObjectURL(new Blob(['made']))"_ba
            << u"来自 %1：\n作业.bin，4 bytes"_s.arg(host()) << "made"_ba;
        QTest::newRow("what the address holds")
            << "a.href = 'data:application/x-y,held'"_ba << u"来自 %1：\n作业.bin"_s.arg(host())
            << "held"_ba;
    }

    void areTheUsersToAllow()
    {
        QFETCH(const QByteArray, link);
        QFETCH(const QString, question);
        QFETCH(const QByteArray, content);
        PageHarness harness;
        AlertView *alert = harness.shell.alertView();
        QVERIFY(
            harness.load(page("<a id=a download='作业.bin'>x</a><script>" + link + "</script>")));
        const auto ask = [&] {
            harness.webView.evaluateJavaScript(u"a.click()"_s);
            return QTest::qWaitFor([alert] { return alert->isVisible(); }, patienceMs);
        };
        QVERIFY(ask());
        QCOMPARE(alert->title(), u"下载文件"_s);
        QCOMPARE(alert->message(), question);
        TRY_COMPARE(kept(harness).size(), 1);
        alert->press(0);
        TRY_COMPARE(kept(harness), QStringList());

        harness.mainQueue.advance(3s);
        for (const auto &name : {u"作业.bin"_s, u"作业 (1).bin"_s}) {
            QVERIFY(ask());
            alert->press(1);
            TRY_COMPARE(harness.shell.toast()->text(), u"已下载：%1"_s.arg(name));
            QFile file(harness.pageHost.downloadDirectory() + u'/' + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), content);
        }
        TRY_COMPARE(kept(harness).size(), 2);
    }

    void aPageHasThreeDownloadsAtOnceAndOneRefusalEndsThemAll()
    {
        m_server.setPage("/file.bin", "x", "application/octet-stream");
        PageHarness harness;
        AlertView *alert = harness.shell.alertView();
        QVERIFY(harness.load(page("<a id=a download>x</a><script>let n = 0;"
                                  "function ask(times) { for (; times; --times) {"
                                  "  a.href = '/file.bin?' + ++n; a.click() } }"
                                  "</script>")));
        // Hears of each after the view, which was there first.
        QSignalSpy asked(harness.profile.engineProfile(),
            SIGNAL(downloadRequested(QQuickWebEngineDownloadRequest *)));
        const auto ask = [&](int times) {
            asked.clear();
            harness.webView.evaluateJavaScript(u"ask(%1)"_s.arg(times));
            return QTest::qWaitFor([&] { return asked.size() == times; }, patienceMs);
        };
        QVERIFY(ask(5));
        TRY_COMPARE(kept(harness).size(), 3);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(alert->isVisible());
            alert->press(1);
        }
        QVERIFY(!alert->isVisible());
        TRY_COMPARE(
            kept(harness), (QStringList {u"file (1).bin"_s, u"file (2).bin"_s, u"file.bin"_s}));

        QVERIFY(ask(2));
        QVERIFY(alert->isVisible());
        alert->press(0);
        QVERIFY(!alert->isVisible());
        QVERIFY(ask(1));
        QVERIFY(!alert->isVisible());
        harness.mainQueue.advance(3s);
        QVERIFY(ask(1));
        QVERIFY(alert->isVisible());
    }

    void thatCannotBeHadSayFailed()
    {
        PageHarness harness;
        QVERIFY(harness.load(page("<a id=a href=/none.bin download>x</a>")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a file was not downloaded"_s));
        harness.webView.evaluateJavaScript(u"a.click()"_s);
        TRY_COMPARE(harness.shell.toast()->text(), u"下载失败"_s);
        QVERIFY(!harness.shell.alertView()->isVisible());
        TRY_COMPARE(kept(harness), QStringList());
    }

    void whatBreaksOffIsTriedAgainWithoutAnotherQuestion()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QList<QTcpSocket *> sockets;
        bool hangsUp = false;
        connect(&server, &QTcpServer::newConnection, &server, [&] {
            QTcpSocket *socket = server.nextPendingConnection();
            sockets << socket;
            connect(socket, &QTcpSocket::readyRead, socket, [socket, &hangsUp] {
                if (!socket->readAll().endsWith("\r\n\r\n"))
                    return;
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: application/x-y\r\n"
                              "Content-Length: 9000000\r\n\r\npart");
                if (hangsUp)
                    socket->disconnectFromHost();
            });
        });
        PageHarness harness;
        AlertView *alert = harness.shell.alertView();
        QVERIFY(harness.load(page("<a id=a download>x</a>")));
        harness.webView.evaluateJavaScript(
            u"a.href = 'http://127.0.0.1:%1/file.bin'; a.click()"_s.arg(server.serverPort()));
        TRY_VERIFY(alert->isVisible());
        alert->press(1);
        QSignalSpy alerts(alert, &AlertView::changed);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a file was not downloaded"_s));
        hangsUp = true;
        for (QTcpSocket *socket : std::as_const(sockets))
            socket->disconnectFromHost();
        TRY_COMPARE(harness.shell.toast()->text(), u"下载失败"_s);
        QVERIFY(sockets.size() > 2);
        QCOMPARE(alerts.size(), 0);
        TRY_COMPARE(kept(harness), QStringList());
    }
};

VANT_WEB_TEST_MAIN(DownloadTest)
#include "DownloadTest.moc"
