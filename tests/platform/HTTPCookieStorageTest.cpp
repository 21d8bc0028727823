#include "platform/HTTPCookieStorage.h"

#include "platform/HTTPSessionManager.h"
#include "support/PageServer.h"

#include <QDateTime>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QUrl school(QStringLiteral("https://school.example/portal/index.html"));

QNetworkCookie cookie(const QByteArray &header)
{
    QNetworkCookie cookie = QNetworkCookie::parseCookies(header).constFirst();
    cookie.normalize(school);
    return cookie;
}

const QString writeForEver = QStringLiteral("--write-for-ever");

//! Writes ever new pairs of equal cookies until it is killed, and a line for each.
[[noreturn]] void keepWriting(const QString &file)
{
    HTTPCookieStorage storage(file);
    const QList<QNetworkCookie> before = storage.cookies();
    for (int n = before.isEmpty() ? 1 : before.constFirst().value().toInt() + 1;; ++n) {
        const QByteArray value = QByteArray::number(n) + "; Max-Age=900";
        storage.setCookie(cookie("mo=" + value));
        storage.setCookie(cookie("tmo=" + value));
        QCoreApplication::processEvents();
        std::puts("written");
        std::fflush(stdout);
    }
}

}

class HTTPCookieStorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsWhatPersists_data();
    void keepsWhatPersists();
    void keepsEveryProperty();
    void forgetsWhatHasExpired();
    void theFileIsPrivate();
    void aKillLeavesTheOldOrTheNewPair();
    void startsEmptyOnABrokenFile_data();
    void startsEmptyOnABrokenFile();
    void tellsRemovalsOnly();
    void travelsWithRequestsOfItsHostOnly();

private:
    QString file() const { return m_folder->filePath(u"state/cookies.json"_s); }
    //! Lets the queued write happen.
    static void settle() { QCoreApplication::processEvents(); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void HTTPCookieStorageTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void HTTPCookieStorageTest::keepsWhatPersists_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("sentBefore");
    QTest::addColumn<bool>("sentAfter");

    const QString same = school.toString();
    const QString below = u"https://sub.school.example/"_s;
    const QString plain = u"http://school.example/portal/"_s;
    const QString elsewhere = u"https://school.example/other/"_s;
    QTest::newRow("persistent") << "mo=1; Max-Age=900"_ba << same << true << true;
    QTest::newRow("of the session") << "mo=1"_ba << same << true << false;
    QTest::newRow("expired") << "mo=1; Expires=Thu, 01 Jan 1970 00:00:00 GMT"_ba << same << false
                             << false;
    QTest::newRow("host-only, at a subdomain")
        << "mo=1; Max-Age=900; Path=/"_ba << below << false << false;
    QTest::newRow("of the domain, at a subdomain")
        << "mo=1; Max-Age=900; Path=/; Domain=school.example"_ba << below << true << true;
    QTest::newRow("secure, in the clear")
        << "mo=1; Max-Age=900; Secure"_ba << plain << false << false;
    QTest::newRow("not secure, in the clear") << "mo=1; Max-Age=900"_ba << plain << true << true;
    QTest::newRow("at another path") << "mo=1; Max-Age=900"_ba << elsewhere << false << false;
    QTest::newRow("of the root, at another path")
        << "mo=1; Max-Age=900; Path=/"_ba << elsewhere << true << true;
    QTest::newRow("of a stranger's domain")
        << "mo=1; Max-Age=900; Domain=bank.example"_ba << u"https://bank.example/"_s << false
        << false;
}

void HTTPCookieStorageTest::keepsWhatPersists()
{
    QFETCH(QByteArray, header);
    QFETCH(QString, address);
    QFETCH(bool, sentBefore);
    QFETCH(bool, sentAfter);

    {
        HTTPCookieStorage storage(file());
        storage.setCookiesFromUrl(QNetworkCookie::parseCookies(header), school);
        settle();
        QCOMPARE(!storage.cookiesForUrl(QUrl(address)).isEmpty(), sentBefore);
    }
    const HTTPCookieStorage restarted(file());
    QCOMPARE(!restarted.cookiesForUrl(QUrl(address)).isEmpty(), sentAfter);
}

void HTTPCookieStorageTest::keepsEveryProperty()
{
    const QNetworkCookie full
        = cookie("tmo=a%20b\"c=d; Expires=Wed, 01 Jan 2100 00:00:00 GMT; Secure; HttpOnly; Path=/p");
    {
        HTTPCookieStorage storage(file());
        storage.setCookie(full);
        settle();
    }
    QCOMPARE(HTTPCookieStorage(file()).cookies(), QList {full});
}

void HTTPCookieStorageTest::forgetsWhatHasExpired()
{
    QNetworkCookie brief = cookie("mo=1");
    brief.setExpirationDate(QDateTime::currentDateTimeUtc().addMSecs(500));
    HTTPCookieStorage storage(file());
    storage.setCookie(brief);
    storage.setCookie(cookie("tmo=1; Max-Age=900"));
    settle();

    QTRY_COMPARE(storage.cookies().size(), 1);
    QTRY_COMPARE(HTTPCookieStorage(file()).cookies().size(), 1);
    QCOMPARE(storage.cookies().constFirst().name(), "tmo");
}

void HTTPCookieStorageTest::theFileIsPrivate()
{
    HTTPCookieStorage storage(file());
    storage.setCookie(cookie("mo=secret; Max-Age=900"));
    settle();
    const auto mode = QFile::permissions(file());
    QCOMPARE(mode & (QFile::ReadOwner | QFile::WriteOwner), QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(mode & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
        QFile::Permissions());
    QCOMPARE(QFile::permissions(m_folder->filePath(u"state"_s))
            & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther),
        QFile::Permissions());
}

void HTTPCookieStorageTest::aKillLeavesTheOldOrTheNewPair()
{
    int last = 0;
    for (int round = 0; round < 10; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {writeForEver, file()});
        for (int writes = 0; writes <= round % 5; ++writes)
            QVERIFY(writer.waitForReadyRead());
        writer.kill();
        QVERIFY(writer.waitForFinished());

        const QList<QNetworkCookie> pair = HTTPCookieStorage(file()).cookies();
        QCOMPARE(pair.size(), 2);
        QCOMPARE(pair[0].value(), pair[1].value());
        QVERIFY(pair[0].value().toInt() >= last);
        last = pair[0].value().toInt();
    }
    QVERIFY(last > 10);
}

void HTTPCookieStorageTest::startsEmptyOnABrokenFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("cut off") << R"([{"Name": "mo", "Value)"_ba;
    QTest::newRow("not a list") << R"({"Name": "mo"})"_ba;
    QTest::newRow("wrong types") << R"([1, null, "x", {"Name": 5, "Expires": "soon"}])"_ba;
}

void HTTPCookieStorageTest::startsEmptyOnABrokenFile()
{
    QFETCH(QByteArray, content);
    QDir(m_folder->path()).mkdir(u"state"_s);
    QFile broken(file());
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write(content);
    broken.close();
    {
        HTTPCookieStorage storage(file());
        QCOMPARE(storage.cookies(), {});
        storage.setCookie(cookie("mo=1; Max-Age=900"));
        settle();
    }
    QCOMPARE(HTTPCookieStorage(file()).cookies().size(), 1);
}

void HTTPCookieStorageTest::tellsRemovalsOnly()
{
    HTTPCookieStorage storage(file());
    QSignalSpy removed(&storage, &HTTPCookieStorage::cookieRemoved);
    storage.setCookie(cookie("mo=1; Max-Age=900"));
    storage.setCookie(cookie("mo=2; Max-Age=900"));
    QCOMPARE(removed.size(), 0);
    QCOMPARE(storage.cookies().size(), 1);
    QCOMPARE(storage.cookies().constFirst().value(), "2");

    storage.setCookiesFromUrl(QNetworkCookie::parseCookies("mo=; Max-Age=0"), school);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(removed.takeFirst().constFirst().value<QNetworkCookie>().name(), "mo");
    QCOMPARE(storage.cookies(), {});

    storage.setCookie(cookie("tmo=1"));
    storage.removeCookie(cookie("tmo=1"));
    QCOMPARE(removed.size(), 1);
    storage.removeCookie(cookie("tmo=1"));
    QCOMPARE(removed.size(), 1);
}

void HTTPCookieStorageTest::travelsWithRequestsOfItsHostOnly()
{
    PageServer rb("127.0.0.1");
    PageServer other("127.0.0.2");
    rb.setPage("/in", "x", "text/html", {"Set-Cookie: mo=1; Path=/", "Set-Cookie: tmo=2; Path=/"});
    HTTPCookieStorage storage(file());
    QNetworkAccessManager network;
    network.setCookieJar(&storage);
    storage.setParent(nullptr);

    int answers = 0;
    const auto get = [&](const QString &address) {
        HTTPSessionManager(&network).GET(
            address, {}, [&](const auto &) { ++answers; },
            [&](const auto &, const auto &) { ++answers; });
    };
    get(rb.url("/in"));
    QTRY_COMPARE(answers, 1);
    get(rb.url("/again"));
    get(other.url("/again"));
    QTRY_COMPARE(answers, 3);
    QCOMPARE(rb.requestsFor("/in").constFirst().cookie(), ""_ba);
    QCOMPARE(rb.requestsFor("/again").constFirst().cookie(), "mo=1; tmo=2"_ba);
    QCOMPARE(other.requestsFor("/again").constFirst().cookie(), ""_ba);
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 3 && arguments[1] == writeForEver)
        keepWriting(arguments[2]);
    HTTPCookieStorageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HTTPCookieStorageTest.moc"
