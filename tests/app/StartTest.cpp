#include "app/ConfigurationFile.h"
#include "app/ProfilePaths.h"
#include "app/RunningInstance.h"
#include "support/Patience.h"

#include <QDir>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// What an address of a local socket has room for.
constexpr qsizetype longestSocketPath = 107;

QStringList statePaths(const ProfilePaths &paths)
{
    return {paths.settings, paths.cookies, paths.keychainFallback, paths.web, paths.cache,
        paths.album, paths.downloads};
}

}

//! What a start goes by: configuration, profile, and the client that runs already. The command line
//! is seen at the program itself.
class StartTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_home;
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
        QTest::newRow("wrong types") << R"({"push": "x", "url": {"a": 1}})"_ba + '\n' << false;
        QTest::newRow("no URL") << R"({"url": "http://a b/"})"_ba + '\n' << false;
        QTest::newRow("no end") << R"({"url": "wx1://a"})"_ba << false;
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

    void initTestCase()
    {
        for (const char *folder :
            {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            qputenv(folder, m_home.path().toUtf8());
    }

    void aProfileHoldsAllOfItsStateAndSharesNothing()
    {
        const QString folder = m_home.filePath(u"new/"_s + QString(150, u'x'));
        const ProfilePaths paths(folder), ordinary((QString()));
        for (const QString &path : statePaths(paths))
            QVERIFY2(path.startsWith(folder + u'/'), qPrintable(path));
        QVERIFY(QFileInfo(folder).isDir() && !paths.name.isEmpty());
        QVERIFY(paths.instanceSocket.size() <= longestSocketPath);
        QStringList all = statePaths(ordinary) + QStringList {ordinary.instanceSocket};
        for (const QString &path : std::as_const(all))
            QVERIFY2(path.startsWith(m_home.path() + u'/'), qPrintable(path));
        all += statePaths(paths) + QStringList {paths.instanceSocket};
        QCOMPARE(all.removeDuplicates(), 0);
    }

    void oneFolderIsOneProfileHoweverItIsWritten()
    {
        const ProfilePaths plain(m_home.filePath(u"a"_s));
        QVERIFY(QFile::link(m_home.filePath(u"a"_s), m_home.filePath(u"link"_s)));
        for (const QString &spelling : {u"a/"_s, u"./b/../a"_s, u"link"_s})
            QCOMPARE(ProfilePaths(m_home.filePath(spelling)).instanceSocket, plain.instanceSocket);
    }

    void saysWhereItIsWrong_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem"); //!< its beginning, after the file's name
        const auto row = [](const char *name, const QByteArray &text, const QString &problem) {
            QTest::newRow(name) << text << problem;
        };
        row("section", "[hosts]\n[host]\nrb = 1", u"2: there is no section [host]"_s);
        row("key", "# c\n[hosts]\nrB = \"http://rb/\"", u"3: there is no key hosts.rB"_s);
        row("boolean", "[app]\npatriarch = \"true\"", u"2: app.patriarch: true or false"_s);
        row("screen", "[app]\nlogin_screen = \"newest\"",
            u"2: app.login_screen: one of these is wanted: current, older"_s);
        for (const char *address : {"https://rb.example", "rb.example/", "ftp://rb.example/"})
            row(address, "[hosts]\nrb = \"" + QByteArray(address) + '"',
                u"2: hosts.rb: a base address is wanted"_s);
        row("origin", "[bridge]\ntrusted_origins = [\n\"https://a\",\n\"a.example\"]",
            u"2: bridge.trusted_origins: a list of origins"_s);
        row("syntax", "[app]\nbuild = \"1\"\npatriarch = maybe", u"3: "_s);
    }

    void saysWhereItIsWrong()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QString, problem);
        const auto parsed = ConfigurationFile::parse(text, u"school.toml"_s);
        const auto *said = std::get_if<QString>(&parsed);
        QVERIFY(said);
        QVERIFY2(said->startsWith(u"school.toml:"_s + problem), qPrintable(*said));
        QVERIFY2(said->size() > 16 && !said->contains(u'\n'), qPrintable(*said));
    }
};

QTEST_GUILESS_MAIN(StartTest)
#include "StartTest.moc"
