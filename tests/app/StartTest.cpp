#include "platform/storage/ProfilePaths.h"
#include "app/start/ConfigurationFile.h"
#include "app/start/ProfileLock.h"
#include "app/start/RunningInstance.h"
#include "support/Patience.h"

#include <QDir>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// What an address of a local socket has room for.
constexpr qsizetype longestSocketPath = 107;

//! A process of another user that does something with a socket.
class Stranger
{
public:
    using Act = bool (*)(int descriptor, const sockaddr *address, socklen_t size);

    Stranger(Act act, const QString &socketPath)
    {
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, socketPath.toUtf8().constData(), sizeof address.sun_path);
        m_pid = ::fork();
        if (m_pid != 0)
            return;
        // Nothing but system calls from here on.
        ::alarm(unsigned(patienceMs / 1000));
        const bool succeeds = ::setuid(anotherUser) == 0
            && act(::socket(AF_UNIX, SOCK_STREAM, 0), reinterpret_cast<sockaddr *>(&address),
                sizeof address);
        ::_exit(succeeds ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    ~Stranger()
    {
        if (!m_hasEnded)
            ::kill(m_pid, SIGKILL);
        hasEnded(0);
    }

    bool hasEnded(int options = WNOHANG)
    {
        m_hasEnded = m_hasEnded || ::waitpid(m_pid, &m_status, options) == m_pid;
        return m_hasEnded;
    }
    bool succeeded() const { return WIFEXITED(m_status) && WEXITSTATUS(m_status) == EXIT_SUCCESS; }

private:
    static constexpr uid_t anotherUser = 65534;

    pid_t m_pid;
    int m_status = 0;
    bool m_hasEnded = false;
};

QStringList statePaths(const ProfilePaths &paths)
{
    return {paths.data + u"/instance.lock"_s, paths.settings, paths.cookies, paths.keychainFallback,
        paths.web, paths.cache, paths.album, paths.downloads};
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

    using Outcome = RunningInstance::Outcome;

    QString socketPath() const { return m_folder->filePath(u"instance"_s); }
    QString lockPath() const { return m_folder->filePath(u"instance.lock"_s); }

    static Outcome handOver(
        const QString &folder, const QUrl &url = {}, const std::optional<QVariantMap> &push = {})
    {
        return RunningInstance(folder).handOver(push, url);
    }

    void startFirst()
    {
        m_first.reset();
        m_first = std::make_unique<RunningInstance>(m_folder->path());
        connect(m_first.get(), &RunningInstance::pushReceived, this,
            [this](const QVariantMap &userInfo) { m_pushes << userInfo; });
        connect(m_first.get(), &RunningInstance::urlReceived, this,
            [this](const QUrl &url) { m_urls << url; });
        connect(m_first.get(), &RunningInstance::activated, this, [this] { ++m_activations; });
        QCOMPARE(m_first->handOver({}, {}), Outcome::First);
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
        QCOMPARE(handOver(m_folder->path(), url, push), Outcome::HandedOver);
        QCOMPARE(handOver(m_folder->path(), {}, QVariantMap()), Outcome::HandedOver);

        TRY_COMPARE(m_activations, 2);
        QCOMPARE(m_pushes, (QList<QVariantMap> {push, {}}));
        QCOMPARE(m_urls, QList {url});
    }

    void whatComesBeforeItAnswersWaits()
    {
        RunningInstance early(m_folder->filePath(u"early"_s));
        QCOMPARE(early.handOver({}, {}), Outcome::First);
        QSignalSpy urls(&early, &RunningInstance::urlReceived);
        const QUrl url(u"wx1://oauth"_s);
        QCOMPARE(handOver(m_folder->filePath(u"early"_s), url), Outcome::HandedOver);
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
        QVERIFY(QFile::exists(m_folder->path()));

        startFirst();
        QCOMPARE(handOver(m_folder->path(), QUrl(u"wx1://a"_s)), Outcome::HandedOver);
        TRY_COMPARE(m_urls.size(), 1);
        const auto others
            = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        for (const QString &path : {socketPath(), lockPath()})
            QCOMPARE(QFile::permissions(path) & others, QFile::Permissions());
    }

    void isFoundWhereTheProfilesFolderHasNoPlaceForASocket_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<int>("mode");
        QTest::newRow("long path") << QString(longestSocketPath, u'x') << S_IRWXU;
        QTest::newRow("others may write") << u"open"_s << (S_IRWXU | S_IRWXG);
    }

    void isFoundWhereTheProfilesFolderHasNoPlaceForASocket()
    {
        QFETCH(QString, folder);
        QFETCH(int, mode);
        folder = m_folder->filePath(folder);
        QCOMPARE(::mkdir(folder.toUtf8().constData(), 0700), 0);
        QCOMPARE(::chmod(folder.toUtf8().constData(), mode_t(mode)), 0);
        RunningInstance first(folder);
        QCOMPARE(first.handOver({}, {}), Outcome::First);
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
            QStringList {u"instance.lock"_s});
        QSignalSpy urls(&first, &RunningInstance::urlReceived);
        QCOMPARE(handOver(folder, QUrl(u"wx1://a"_s)), Outcome::HandedOver);
        first.answer();
        TRY_COMPARE(urls.size(), 1);
    }

    void nothingGoesToOrComesFromAnotherUser()
    {
        if (::geteuid() != 0)
            QSKIP("only root can be somebody else");
        QCOMPARE(::chmod(m_folder->path().toUtf8().constData(), 0777), 0);
        // What comes is not heard.
        QCOMPARE(::chmod(socketPath().toUtf8().constData(), 0777), 0);
        QTest::ignoreMessage(QtWarningMsg, "another user's process was turned away");
        Stranger caller(
            [](int descriptor, const sockaddr *address, socklen_t size) {
                if (::connect(descriptor, address, size) != 0)
                    return false;
                // It may have been turned away already.
                const QByteArrayView message("{\"url\": \"wx1://evil\"}\n");
                ::send(descriptor, message.data(), size_t(message.size()), MSG_NOSIGNAL);
                return true;
            },
            socketPath());
        TRY_VERIFY(caller.hasEnded());
        QVERIFY(caller.succeeded());
        QCOMPARE(handOver(m_folder->path(), QUrl(u"wx1://good"_s)), Outcome::HandedOver);
        TRY_COMPARE(m_urls, QList {QUrl(u"wx1://good"_s)});

        // What goes to one who pretends stays here.
        const QString other = m_folder->filePath(u"other"_s);
        ProfileLock lock(other, other + u"/instance.lock"_s);
        QVERIFY(lock.tryLock());
        const QString trap = m_folder->filePath(u"trap"_s);
        Stranger listener(
            [](int descriptor, const sockaddr *address, socklen_t size) {
                if (::bind(descriptor, address, size) != 0 || ::listen(descriptor, 5) != 0)
                    return false;
                char byte = 0;
                return ::read(::accept(descriptor, nullptr, nullptr), &byte, 1) == 0;
            },
            trap);
        TRY_VERIFY(QFile::exists(trap));
        lock.leaveNote(trap);
        QCOMPARE(handOver(other, QUrl(u"wx1://oauth?code=1"_s)), Outcome::InUse);
        TRY_VERIFY(listener.hasEnded());
        QVERIFY2(listener.succeeded(), "it heard something");
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
        QCOMPARE(handOver(m_folder->path(), QUrl(u"wx1://good"_s)), Outcome::HandedOver);
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
        QStringList all = statePaths(ordinary);
        for (const QString &path : std::as_const(all))
            QVERIFY2(path.startsWith(m_home.path() + u'/'), qPrintable(path));
        all += statePaths(paths);
        QCOMPARE(all.removeDuplicates(), 0);
    }

    void oneFolderIsOneProfileHoweverItIsWritten()
    {
        const ProfilePaths plain(m_home.filePath(u"a"_s));
        QVERIFY(QFile::link(m_home.filePath(u"a"_s), m_home.filePath(u"link"_s)));
        for (const QString &spelling : {u"a/"_s, u"./b/../a"_s, u"link"_s})
            QCOMPARE(ProfilePaths(m_home.filePath(spelling)).data, plain.data);
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
        row("place", "[web]\nforeign_pages = \"there\"",
            u"2: web.foreign_pages: one of these is wanted: here, browser"_s);
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
