#include "app/RunningInstance.h"
#include "support/Patience.h"

#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class RunningInstanceTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RunningInstance> m_first;
    QList<QVariantMap> m_pushes;
    QList<QUrl> m_urls;
    int m_activations = 0;

    QString socketPath() const { return m_folder->filePath(u"socket"_s); }

    void startFirst()
    {
        m_first.reset();
        m_first = std::make_unique<RunningInstance>(socketPath());
        connect(m_first.get(), &RunningInstance::pushReceived, this,
            [this](const QVariantMap &userInfo) { m_pushes << userInfo; });
        connect(m_first.get(), &RunningInstance::urlReceived, this,
            [this](const QUrl &url) { m_urls << url; });
        connect(m_first.get(), &RunningInstance::activated, this, [this] { ++m_activations; });
        QVERIFY(!m_first->handOver({}, {}));
        m_first->answer();
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_pushes.clear();
        m_urls.clear();
        m_activations = 0;
        startFirst();
    }

    void handsOverWhatItWasStartedWith()
    {
        const QVariantMap push {
            {u"payload"_s, u"https://p/?a=\n\"学\""_s}, {u"aps"_s, QVariantMap {{u"badge"_s, 1}}}};
        const QUrl url = QUrl::fromEncoded("wx1://oauth?code=a%26b%20c&state=%E5%AD%A6#f");
        QVERIFY(RunningInstance(socketPath()).handOver(push, url));
        QVERIFY(RunningInstance(socketPath()).handOver(QVariantMap(), {}));
        TRY_COMPARE(m_activations, 2);
        QCOMPARE(m_pushes, (QList<QVariantMap> {push, {}}));
        QCOMPARE(m_urls, QList {url});
    }

    void whatComesBeforeItAnswersWaits()
    {
        RunningInstance early(m_folder->filePath(u"early"_s));
        QVERIFY(!early.handOver({}, {}));
        QSignalSpy urls(&early, &RunningInstance::urlReceived);
        const QUrl url(u"wx1://oauth"_s);
        QVERIFY(RunningInstance(m_folder->filePath(u"early"_s)).handOver({}, url));
        // As while the start waits for something else.
        QTest::qWait(0);
        early.answer();
        TRY_COMPARE(urls.size(), 1);
        QCOMPARE(urls[0][0].toUrl(), url);
    }

    void takesOverFromOneThatWasKilled()
    {
        m_first.reset();
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, socketPath().toUtf8().constData(), sizeof address.sun_path);
        const int left = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(left, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        ::close(left);
        QVERIFY(QFile::exists(socketPath()));

        startFirst();
        QVERIFY(RunningInstance(socketPath()).handOver({}, QUrl(u"wx1://a"_s)));
        TRY_COMPARE(m_urls.size(), 1);
        const auto others
            = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QCOMPARE(QFile::permissions(socketPath()) & others, QFile::Permissions());
    }

    void takesItsMessagesAndNoGarbage_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("taken");
        QTest::newRow("a message, byte by byte") << R"({"url": "wx1://a"})"_ba + '\n' << true;
        QTest::newRow("not JSON") << "GET / HTTP/1.1\r\n\r\n"_ba << false;
        QTest::newRow("a list") << "[1,2]\n"_ba << false;
        QTest::newRow("wrong types") << R"({"push": "x", "url": {"a": 1}})"_ba + '\n' << false;
        QTest::newRow("no URL") << R"({"url": "http://a b/"})"_ba + '\n' << false;
        QTest::newRow("no end") << R"({"url": "wx1://a"})"_ba << false;
        QTest::newRow("bytes") << QByteArray("\0\xff\n", 3) << false;
    }

    void takesItsMessagesAndNoGarbage()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const bool, taken);
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        QVERIFY(socket.waitForConnected());
        for (const char byte : bytes) {
            if (socket.write(&byte, 1) == 1)
                socket.waitForBytesWritten(100);
            QCoreApplication::processEvents();
        }
        socket.disconnectFromServer();
        TRY_COMPARE(m_urls.size(), taken ? 1 : 0);
        QVERIFY(RunningInstance(socketPath()).handOver({}, QUrl(u"wx1://good"_s)));
        TRY_VERIFY(m_urls.contains(QUrl(u"wx1://good"_s)));
        QCOMPARE(m_urls.size(), taken ? 2 : 1);
        QCOMPARE(m_pushes, {});
    }

    void takesNoMessageWithoutEnd()
    {
        QLocalSocket socket;
        socket.connectToServer(socketPath());
        QVERIFY(socket.waitForConnected());
        socket.write(QByteArray(1'000'000, 'x'));
        TRY_COMPARE(socket.state(), QLocalSocket::UnconnectedState);
    }
};

QTEST_GUILESS_MAIN(RunningInstanceTest)
#include "RunningInstanceTest.moc"
