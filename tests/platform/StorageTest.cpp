#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/PrivateFile.h"
#include "platform/storage/UserDefaults.h"
#include "support/Patience.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QUrl school(QStringLiteral("https://school.example/portal/index.html"));

QNetworkCookie cookie(const QByteArray &header)
{
    QNetworkCookie cookie = QNetworkCookie::parseCookies(header).constFirst();
    cookie.normalize(school);
    return cookie;
}

//! The number of the last pair written; -1 when the two are not of one writing.
int storedPair(const QDir &folder)
{
    const UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    const QList cookies = HTTPCookieStorage(folder.filePath(u"cookies.json"_s)).cookies();
    const int n = defaults.objectForKey(u"one"_s).toInt();
    const bool whole = defaults.objectForKey(u"two"_s).toInt() == n
        && defaults.stringForKey(u"filling"_s).size() == n % 100
        && (cookies.isEmpty() || (cookies.size() == 2 && cookies[0].value() == cookies[1].value()));
    return whole ? n : -1;
}

//! Writes ever new pairs of equal numbers and cookies until it is killed, and a line for each.
[[noreturn]] void keepWriting(const QDir &folder)
{
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    HTTPCookieStorage storage(folder.filePath(u"cookies.json"_s));
    for (int n = storedPair(folder) + 1;; ++n) {
        defaults.setObject(n, u"one"_s);
        defaults.setObject(QString(n % 100, u'学'), u"filling"_s);
        defaults.setObject(n, u"two"_s);
        defaults.synchronize();
        storage.setCookie(cookie("mo=" + QByteArray::number(n) + "; Max-Age=900"));
        storage.setCookie(cookie("tmo=" + QByteArray::number(n) + "; Max-Age=900"));
        QCoreApplication::processEvents();
        std::puts("written");
        std::fflush(stdout);
    }
}

}

//! The settings and the cookies, on disk.
//! The longest that a file may become by a write of this process, in bytes.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    void (*m_handler)(int);
    rlimit m_before {};
};

class StorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void cookiesGoWhereTheyBelong()
    {
        const QUrl below(u"https://sub.school.example/"_s);
        const QUrl plain(u"http://school.example/portal/"_s);
        const QUrl elsewhere(u"https://school.example/other/"_s);
        const QUrl stranger(u"https://bank.example/"_s);
        const struct
        {
            QByteArray header;
            QUrl address;
            bool sentBefore;
            bool sentAfter;
        } rows[] {
            {"mo=1; Max-Age=99", school, true, true},
            {"mo=1", school, true, false},
            {"mo=1; Max-Age=99; Path=/", below, false, false},
            {"mo=1; Max-Age=99; Path=/; Domain=school.example", below, true, true},
            {"mo=1; Max-Age=99; Secure", plain, false, false},
            {"mo=1; Max-Age=99", plain, true, true},
            {"mo=1; Max-Age=99; Path=/", elsewhere, true, true},
            {"mo=1; Max-Age=99; Domain=bank.example", stranger, false, false},
        };
        for (const auto &[header, address, sentBefore, sentAfter] : rows) {
            QFile::remove(cookies());
            HTTPCookieStorage storage(cookies());
            storage.setCookiesFromUrl(QNetworkCookie::parseCookies(header), school);
            QCoreApplication::processEvents();
            QVERIFY2(storage.cookiesForUrl(address).isEmpty() != sentBefore, header);
            const HTTPCookieStorage restarted(cookies());
            QVERIFY2(restarted.cookiesForUrl(address).isEmpty() != sentAfter, header);
        }
    }

    void cookiesExpireOnDiskToo()
    {
        QNetworkCookie brief = cookie("mo=1");
        brief.setExpirationDate(QDateTime::currentDateTimeUtc().addMSecs(500));
        const QNetworkCookie full = cookie(
            "tmo=a%20b\"c=d; Expires=Wed, 01 Jan 2100 00:00:00 GMT; Secure; HttpOnly; Path=/p"
            "; SameSite=Strict");
        HTTPCookieStorage storage(cookies());
        storage.setCookie(brief);
        storage.setCookie(full);
        QCoreApplication::processEvents();
        TRY_COMPARE(storage.cookies(), QList {full});
        QCOMPARE(HTTPCookieStorage(cookies()).cookies(), QList {full});
    }

    void brokenCookiesAreForgotten();

    void filesArePrivate()
    {
        // Whatever the user's ordinary mask is.
        const mode_t before = ::umask(S_IWGRP | S_IWOTH);
        UserDefaults defaults(settings());
        HTTPCookieStorage storage(cookies());
        constexpr auto others = QFile::Permissions(0x0077);
        for (const auto &value : {u"first"_s, u"second"_s}) {
            defaults.setObject(value, u"passwordForST"_s);
            defaults.synchronize();
            storage.setCookie(cookie("mo=" + value.toUtf8() + "; Max-Age=900"));
            QCoreApplication::processEvents();
            for (const QString &file : {settings(), cookies(), QFileInfo(cookies()).path()})
                QCOMPARE(QFile::permissions(file) & others, QFile::Permissions());
        }
        ::umask(before);
    }

    // The disk takes its time, and the caller waits for it.
    void whatIsStoredAlreadyIsNotWrittenAgain()
    {
        const QString path = m_folder->filePath(u"settings.ini"_s);
        // A remark, which no writing keeps.
        const auto keepsRemarkAfterStoring = [&](const QVariant &value) {
            UserDefaults defaults(path);
            QFile file(path);
            if (!file.open(QIODevice::Append) || file.write("; remark\n") < 0)
                qFatal("no settings file");
            file.close();
            defaults.setObject(value, u"key"_s);
            defaults.removeObjectForKey(u"nothing"_s);
            defaults.synchronize();
            return file.open(QIODevice::ReadOnly) && file.readAll().contains("remark");
        };
        for (const QVariant &value : {QVariant(true), QVariant(u"getCidSuccess"_s), QVariant(3),
                 QVariant(QVariantMap {{u"学"_s, 1}})}) {
            QVERIFY(!keepsRemarkAfterStoring(u"another"_s));
            QVERIFY(!keepsRemarkAfterStoring(value));
            QVERIFY(keepsRemarkAfterStoring(value));
            QCOMPARE(UserDefaults(path).objectForKey(u"key"_s).toString(), value.toString());
        }
    }

    void aFullDiskLeavesTheOldFiles()
    {
        const QString settings = m_folder->filePath(u"s.ini"_s);
        const QString other = m_folder->filePath(u"o"_s);
        const QString longer(2000, u'x');
        UserDefaults defaults(settings);
        defaults.setObject(u"old"_s, u"k"_s);
        QVERIFY(defaults.synchronize());
        QVERIFY(PrivateFile::write(other, "old"));
        const QByteArray before = *PrivateFile::read(settings);
        {
            // Room for the lock of the settings, and no more.
            const FileSizeLimit limit(512);
            defaults.setObject(longer, u"k"_s);
            QTest::ignoreMessage(
                QtWarningMsg, QRegularExpression(u"settings could not be written"_s));
            QVERIFY(!defaults.synchronize());
            QVERIFY(!PrivateFile::write(other, longer.toUtf8()));
            QCoreApplication::processEvents();
        }
        QCOMPARE(*PrivateFile::read(settings), before);
        QCOMPARE(*PrivateFile::read(other), "old");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 2);
        QCOMPARE(defaults.stringForKey(u"k"_s), longer);
        QVERIFY(defaults.synchronize());
        QCOMPARE(UserDefaults(settings).stringForKey(u"k"_s), longer);
    }

    void aKillLeavesTheOldOrTheNewPair()
    {
        int last = 0;
        for (int round = 0; round < 15; ++round) {
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {u"--write"_s, m_folder->path()});
            for (int writes = 0; writes <= round % 5; ++writes)
                QVERIFY2(
                    writer.waitForReadyRead(patienceMs), "it cannot write after the last kill");
            writer.kill();
            QVERIFY(writer.waitForFinished(patienceMs));
            const int stored = storedPair(m_folder->path());
            QVERIFY2(stored >= last, qPrintable(u"%1 after %2"_s.arg(stored).arg(last)));
            last = stored;
        }
        QVERIFY2(last > 15, qPrintable(QString::number(last)));
    }

private:
    QString settings() const { return m_folder->filePath(u"state/settings.ini"_s); }
    QString cookies() const { return m_folder->filePath(u"state/cookies.json"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void StorageTest::brokenCookiesAreForgotten()
{
    QDir(m_folder->path()).mkdir(u"state"_s);
    for (const QByteArray &content : {""_ba, R"([{"Name": "mo", "Value)"_ba, R"({"Name": "mo"})"_ba,
             R"([1, null, "x", {"Name": 5, "Expires": "soon"}])"_ba}) {
        QFile broken(cookies());
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write(content);
        broken.close();
        HTTPCookieStorage storage(cookies());
        QCOMPARE(storage.cookies(), {});
        storage.setCookie(cookie("mo=1; Max-Age=900"));
        QCoreApplication::processEvents();
        QCOMPARE(HTTPCookieStorage(cookies()).cookies().size(), 1);
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments[1] == u"--write")
        keepWriting(arguments[2]);
    StorageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StorageTest.moc"
