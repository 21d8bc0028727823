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
    std::unique_ptr<PageHarness> m_page;

    //! Everything in the folder for downloads, what is hidden included.
    QStringList kept() const
    {
        const QDir folder(m_page->pageHost.downloadDirectory());
        return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void init() { m_page = std::make_unique<PageHarness>(); }
    void cleanup() { m_page.reset(); }

    void areTheUsersToAllow_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<QString>("size"); // as the question ends
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("file") << "a.href = '/file.bin'"_ba << u"，2 MB"_s
                              << QByteArray(2'300'000, 'x');
        QTest::newRow("what the page made")
            << "a.href = URL.createObjectURL(new Blob(['made']))"_ba << u"，4 bytes"_s << "made"_ba;
        QTest::newRow("what the address holds")
            << "a.href = 'data:application/x-y,held'"_ba << QString() << "held"_ba;
    }

    void areTheUsersToAllow()
    {
        QFETCH(const QByteArray, link);
        QFETCH(const QString, size);
        QFETCH(const QByteArray, content);
        m_page->server.setPage("/file.bin", content, "application/octet-stream");
        QVERIFY(m_page->loadPage("<a id=a download='作业.bin'>x</a><script>" + link + "</script>"));
        const auto ask = [this] {
            m_page->webView.evaluateJavaScript(u"a.click()"_s);
            return waitFor([this] { return m_page->alert->isVisible(); });
        };
        QVERIFY(ask());
        QCOMPARE(m_page->alert->title(), u"下载文件"_s);
        QCOMPARE(m_page->alert->message(), u"来自 %1：\n作业.bin"_s.arg(m_page->host()) + size);
        TRY_COMPARE(kept().size(), 1);
        m_page->alert->press(0);
        TRY_COMPARE(kept(), QStringList());

        m_page->mainQueue.advance(3s);
        for (const auto &name : {u"作业.bin"_s, u"作业 (1).bin"_s}) {
            QVERIFY(ask());
            m_page->alert->press(1);
            TRY_COMPARE(m_page->shell.toast()->text(), u"已下载：%1"_s.arg(name));
            QFile file(m_page->pageHost.downloadDirectory() + u'/' + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), content);
        }
        TRY_COMPARE(kept().size(), 2);
    }

    void aPageHasThreeDownloadsAtOnceAndOneRefusalEndsThemAll()
    {
        m_page->server.setPage("/file.bin", "x", "application/octet-stream");
        QVERIFY(m_page->loadPage("<a id=a download>x</a><script>let n = 0;"
                                 "function ask(times) { for (; times; --times) {"
                                 "  a.href = '/file.bin?' + ++n; a.click() } }"
                                 "</script>"));
        // Hears of each after the view, which was there first.
        QSignalSpy asked(m_page->profile.engineProfile(),
            SIGNAL(downloadRequested(QQuickWebEngineDownloadRequest *)));
        const auto ask = [&](int times) {
            asked.clear();
            m_page->webView.evaluateJavaScript(u"ask(%1)"_s.arg(times));
            return waitFor([&] { return asked.size() == times; });
        };
        QVERIFY(ask(5));
        TRY_COMPARE(kept().size(), 3);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(m_page->alert->isVisible());
            m_page->alert->press(1);
        }
        QVERIFY(!m_page->alert->isVisible());
        TRY_COMPARE(kept(), (QStringList {u"file (1).bin"_s, u"file (2).bin"_s, u"file.bin"_s}));

        QVERIFY(ask(2));
        QVERIFY(m_page->alert->isVisible());
        m_page->alert->press(0);
        QVERIFY(!m_page->alert->isVisible());
        QVERIFY(ask(1));
        QVERIFY(!m_page->alert->isVisible());
        m_page->mainQueue.advance(3s);
        QVERIFY(ask(1));
        QVERIFY(m_page->alert->isVisible());
    }

    void thatCannotBeHadSayFailed()
    {
        QVERIFY(m_page->loadPage("<a id=a href=/none.bin download>x</a>"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a file was not downloaded"_s));
        m_page->webView.evaluateJavaScript(u"a.click()"_s);
        TRY_COMPARE(m_page->shell.toast()->text(), u"下载失败"_s);
        QVERIFY(!m_page->alert->isVisible());
        TRY_COMPARE(kept(), QStringList());
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
        QVERIFY(m_page->loadPage("<a id=a download>x</a>"));
        m_page->webView.evaluateJavaScript(
            u"a.href = 'http://127.0.0.1:%1/file.bin'; a.click()"_s.arg(server.serverPort()));
        TRY_VERIFY(m_page->alert->isVisible());
        m_page->alert->press(1);
        QSignalSpy alerts(m_page->alert, &AlertView::changed);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a file was not downloaded"_s));
        hangsUp = true;
        for (QTcpSocket *socket : std::as_const(sockets))
            socket->disconnectFromHost();
        TRY_COMPARE(m_page->shell.toast()->text(), u"下载失败"_s);
        QVERIFY(sockets.size() > 2);
        QCOMPARE(alerts.size(), 0);
        TRY_COMPARE(kept(), QStringList());
    }
};

VANT_WEB_TEST_MAIN(DownloadTest)
#include "DownloadTest.moc"
