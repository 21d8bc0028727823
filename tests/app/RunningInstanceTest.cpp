#include "app/RunningInstance.h"

#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class RunningInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void handsOver_data();
    void handsOver();
    void takesManyAtOnce();
    void takesOverFromOneThatWasKilled();
    void theSocketIsTheUsersOwn();
    void ignoresGarbage_data();
    void ignoresGarbage();
    void takesAMessageInPieces();
    void anEndedInstanceLeavesItsPlace();

private:
    QString socketPath() const { return m_folder->filePath(u"socket"_s); }
    void startFirst();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RunningInstance> m_first;
    QList<QVariantMap> m_pushes;
    QList<QUrl> m_urls;
    int m_activations = 0;
};

void RunningInstanceTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_pushes.clear();
    m_urls.clear();
    m_activations = 0;
    startFirst();
}

void RunningInstanceTest::startFirst()
{
    m_first.reset();
    m_first = std::make_unique<RunningInstance>(socketPath());
    connect(m_first.get(), &RunningInstance::pushReceived, this,
        [this](const QVariantMap &userInfo) { m_pushes << userInfo; });
    connect(m_first.get(), &RunningInstance::urlReceived, this,
        [this](const QUrl &url) { m_urls << url; });
    connect(m_first.get(), &RunningInstance::activated, this, [this] { ++m_activations; });
    QVERIFY(!m_first->handOver({}, {}));
}

void RunningInstanceTest::handsOver_data()
{
    QTest::addColumn<QList<QVariantMap>>("pushes");
    QTest::addColumn<QList<QUrl>>("urls");
    const QList<QVariantMap> push {
        {{u"payload"_s, u"https://p/?a=\n\"学\""_s}, {u"aps"_s, QVariantMap {{u"badge"_s, 1}}}}};
    const QList<QUrl> url {QUrl::fromEncoded("wx1://oauth?code=a%26b%20c&state=%E5%AD%A6#f")};
    QTest::newRow("nothing") << QList<QVariantMap>() << QList<QUrl>();
    QTest::newRow("push") << push << QList<QUrl>();
    QTest::newRow("empty push") << QList {QVariantMap()} << QList<QUrl>();
    QTest::newRow("url") << QList<QVariantMap>() << url;
    QTest::newRow("both") << push << url;
}

void RunningInstanceTest::handsOver()
{
    QFETCH(QList<QVariantMap>, pushes);
    QFETCH(QList<QUrl>, urls);
    RunningInstance second(socketPath());
    QVERIFY(second.handOver(pushes.isEmpty() ? std::nullopt : std::optional(pushes.constFirst()),
        urls.isEmpty() ? QUrl() : urls.constFirst()));
    QTRY_COMPARE(m_activations, 1);
    QCOMPARE(m_pushes, pushes);
    QCOMPARE(m_urls, urls);
}

void RunningInstanceTest::takesManyAtOnce()
{
    constexpr int count = 20;
    for (int i = 0; i < count; ++i)
        QVERIFY(RunningInstance(socketPath()).handOver({}, QUrl(u"wx1://%1"_s.arg(i))));
    QTRY_COMPARE(m_activations, count);
    QCOMPARE(m_urls.size(), count);
}

void RunningInstanceTest::takesOverFromOneThatWasKilled()
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
    QTRY_COMPARE(m_urls.size(), 1);
}

void RunningInstanceTest::theSocketIsTheUsersOwn()
{
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(socketPath()) & others, QFile::Permissions());
}

void RunningInstanceTest::ignoresGarbage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("not JSON") << "GET / HTTP/1.1\r\n\r\n"_ba;
    QTest::newRow("an empty line") << "\n"_ba;
    QTest::newRow("a list") << "[1,2]\n"_ba;
    QTest::newRow("wrong types") << R"({"push": "x", "url": {"a": 1}})"_ba + '\n';
    QTest::newRow("no URL") << R"({"url": "http://a b/"})"_ba + '\n';
    QTest::newRow("no end") << R"({"url": "wx1://a"})"_ba;
    QTest::newRow("no end, endless") << QByteArray(1'000'000, 'x');
    QTest::newRow("bytes") << QByteArray("\0\xff\n", 3);
}

void RunningInstanceTest::ignoresGarbage()
{
    QFETCH(QByteArray, bytes);
    QLocalSocket socket;
    socket.connectToServer(socketPath());
    QVERIFY(socket.waitForConnected());
    socket.write(bytes);
    socket.flush();
    socket.disconnectFromServer();

    QVERIFY(RunningInstance(socketPath()).handOver({}, QUrl(u"wx1://good"_s)));
    QTRY_COMPARE(m_urls, QList {QUrl(u"wx1://good"_s)});
    QCOMPARE(m_pushes, {});
}

void RunningInstanceTest::takesAMessageInPieces()
{
    QLocalSocket socket;
    socket.connectToServer(socketPath());
    QVERIFY(socket.waitForConnected());
    for (const char byte : R"({"url": "wx1://a"})"_ba + '\n') {
        socket.write(&byte, 1);
        QVERIFY(socket.waitForBytesWritten());
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(m_urls, QList {QUrl(u"wx1://a"_s)});
    QCOMPARE(m_activations, 1);
}

void RunningInstanceTest::anEndedInstanceLeavesItsPlace()
{
    m_first.reset();
    RunningInstance second(socketPath());
    QVERIFY(!second.handOver({}, QUrl(u"wx1://a"_s)));
    QVERIFY(RunningInstance(socketPath()).handOver({}, {}));
}

QTEST_GUILESS_MAIN(RunningInstanceTest)
#include "RunningInstanceTest.moc"
