#include "platform/storage/HTTPCookieStorage.h"
#include "platform/storage/PrivateFile.h"
#include "platform/storage/UserDefaults.h"
#include "support/Patience.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QScopeGuard>

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

//! The number last written; -1 when the settings, or the cookies, are not of one writing.
int stored(const QDir &folder)
{
    const UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    const QList cookies = HTTPCookieStorage(folder.filePath(u"cookies.json"_s)).cookies();
    const int n = defaults.objectForKey(u"one"_s).toInt();
    const bool whole = defaults.stringForKey(u"two"_s) == QString(n % 100, u'学')
        && (cookies.isEmpty() || (cookies.size() == 2 && cookies[0].value() == cookies[1].value()));
    return whole ? n : -1;
}

//! Writes ever new numbers into settings and cookies until it is killed, and a line for each.
[[noreturn]] void keepWriting(const QDir &folder)
{
    UserDefaults defaults(folder.filePath(u"settings.ini"_s));
    HTTPCookieStorage storage(folder.filePath(u"cookies.json"_s));
    for (int n = stored(folder) + 1;; ++n) {
        defaults.setObject(n, u"one"_s);
        defaults.setObject(QString(n % 100, u'学'), u"two"_s);
        defaults.synchronize();
        for (const char *name : {"mo=", "tmo="})
            storage.setCookie(cookie(name + QByteArray::number(n) + "; Max-Age=900"));
        QCoreApplication::processEvents();
        std::puts("written");
        std::fflush(stdout);
    }
}

}

//! The settings and the cookies, on disk.
class StorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void cookiesOfASessionAndExpiredOnesAreNotOnDisk()
    {
        QNetworkCookie brief = cookie("mo=1");
        brief.setExpirationDate(QDateTime::currentDateTimeUtc().addMSecs(500));
        const QNetworkCookie full = cookie(
            "tmo=a%20b\"c=d; Expires=Wed, 01 Jan 2100 00:00:00 GMT; Secure; HttpOnly; Path=/p"
            "; SameSite=Strict");
        HTTPCookieStorage storage(cookies());
        for (const QNetworkCookie &one : {brief, full, cookie("route=1")})
            storage.setCookie(one);
        QCoreApplication::processEvents();
        TRY_COMPARE(storage.cookies().size(), 2);
        QCOMPARE(HTTPCookieStorage(cookies()).cookies(), QList {full});
    }

    void brokenCookiesAreForgotten()
    {
        for (const char *content : {"", R"([{"Name": "mo", "Value")", R"({"Name": "mo"})",
                 R"([1, null, "x", {"Name": 5, "Expires": "soon"}])"}) {
            QVERIFY(PrivateFile::write(cookies(), content));
            HTTPCookieStorage storage(cookies());
            QCOMPARE(storage.cookies(), {});
            storage.setCookie(cookie("mo=1; Max-Age=900"));
            QCoreApplication::processEvents();
            QCOMPARE(HTTPCookieStorage(cookies()).cookies().size(), 1);
        }
    }

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
        UserDefaults defaults(settings());
        for (const QVariant &value : QVariantList {true, u"x"_s, 3, QVariantMap {{u"学"_s, 1}}}) {
            defaults.setObject(value, u"key"_s);
            QVERIFY(defaults.synchronize());
            // A remark, which no writing keeps.
            QVERIFY(PrivateFile::write(settings(), *PrivateFile::read(settings()) + "; remark\n"));
            UserDefaults restarted(settings());
            restarted.setObject(value, u"key"_s);
            restarted.removeObjectForKey(u"nothing"_s);
            restarted.synchronize();
            QVERIFY(PrivateFile::read(settings())->contains("remark"));
            restarted.setObject(u"another"_s, u"key"_s);
            restarted.synchronize();
            QVERIFY(!PrivateFile::read(settings())->contains("remark"));
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
        rlimit room {};
        ::getrlimit(RLIMIT_FSIZE, &room);
        // Room for the lock of the settings, and no more.
        const rlimit little {512, room.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &little);
        const auto isRoomAgain = qScopeGuard([&] { ::setrlimit(RLIMIT_FSIZE, &room); });
        defaults.setObject(longer, u"k"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"settings could not be written"_s));
        QVERIFY(!defaults.synchronize());
        QVERIFY(!PrivateFile::write(other, longer.toUtf8()));
        QCoreApplication::processEvents();
        ::setrlimit(RLIMIT_FSIZE, &room);
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
            const int now = stored(m_folder->path());
            QVERIFY2(now >= last, qPrintable(u"%1 after %2"_s.arg(now).arg(last)));
            last = now;
        }
        QVERIFY2(last > 15, qPrintable(QString::number(last)));
    }

private:
    QString settings() const { return m_folder->filePath(u"state/settings.ini"_s); }
    QString cookies() const { return m_folder->filePath(u"state/cookies.json"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

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
