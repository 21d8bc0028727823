#include "platform/http/HTTPSessionManager.h"

#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPQuery.h"
#include "platform/transport/ServerTrust.h"
#include "support/PageServer.h"
#include "support/Table.h"

#include <QSslCertificate>
#include <QTcpServer>
#include <QTcpSocket>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

//! Answers every request on loopback with the bytes it was given, be they HTTP or not, and hangs
//! up; null bytes: never.
class ScriptedServer : public QTcpServer
{
public:
    explicit ScriptedServer(const QByteArray &answer)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer] {
                if (!socket->peek(socket->bytesAvailable()).endsWith("\r\n\r\n"))
                    return;
                requests << socket->readAll();
                if (answer.isNull())
                    return;
                socket->write(answer);
                socket->disconnectFromHost();
            });
        });
    }

    QString address() const { return u"http://127.0.0.1:%1/"_s.arg(serverPort()); }

    QByteArrayList requests; //!< as they came
};

//! What a call came to. A second completion, or one from inside the call, shows in the counts.
struct Ending
{
    int successes = 0;
    int failures = 0;
    HTTPSuccess success = [this](const HTTPResponse &) { ++successes; };
    HTTPFailure failure = [this](const HTTPResponse &, const HTTPError &error) {
        ++failures;
        QVERIFY(error.code != 0);
    };
};

const QByteArray good = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 1\r\n\r\nx";

}

class HTTPSessionManagerTest : public QObject
{
    Q_OBJECT

private:
    using Failures = Table<QByteArray, bool>;

private Q_SLOTS:
    void putsParametersBehindAnAddress()
    {
        const HTTPParameters title {{u"t"_s, u"课/a b"_s}, {u"z"_s, QVariant()}};
        const std::pair<QString, QByteArray> rows[] {
            {u"http://h/do?"_s, "http://h/do?t=%E8%AF%BE%2Fa%20b"},
            {u"http://h/校?q=1"_s, "http://h/%E6%A0%A1?q=1&t=%E8%AF%BE%2Fa%20b"},
            // A stray "%" is the address's own trouble.
            {u"http://h/do?rate=100%"_s, "http://h/do?rate=100%25&t=%E8%AF%BE%2Fa%20b"},
        };
        for (const auto &[address, url] : rows)
            QCOMPARE(HTTPQuery::urlWithQuery(address, title).toEncoded(), url);
        QCOMPARE(HTTPQuery::urlWithQuery(u"http://h/do"_s, {}).toEncoded(), "http://h/do"_ba);
    }

    void failsOnceAndLater_data()
    {
        const QByteArray cut = "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{\"code\":200}";
        Failures::rows({
            {"never answers", {}, false},
            {"is cancelled under way", {}, true},
            {"hangs up", "", false},
            {"hangs up in the body", cut, false},
            {"talks something else", "SSH-2.0-OpenSSH_9.2\r\n\r\n", false},
        });
    }

    void failsOnceAndLater()
    {
        const auto [bytes, cancel] = Failures::row();
        ScriptedServer server(bytes);
        HTTPSessionManager manager(&m_network);
        manager.setTimeoutInterval(bytes.isNull() && !cancel ? 200ms : 60'000ms);
        Ending ending;
        HTTPTask *task = manager.GET(server.address(), {}, ending.success, ending.failure);
        QSignalSpy gone(task, &QObject::destroyed);
        if (cancel) {
            TRY_COMPARE(server.requests.size(), 1);
            task->cancel();
            task->cancel();
        }
        QCOMPARE(ending.failures, 0);
        TRY_COMPARE(gone.size(), 1);
        QCOMPARE(ending.failures, 1);
        QCOMPARE(ending.successes, 0);
    }

    void keepsACopyOnlyWhereAskedTo()
    {
        const QTemporaryDir folder;
        HTTPNetwork network(nullptr, folder.path());
        ScriptedServer server(good);
        Ending ending;
        const auto get = [&](HTTPSessionManager::CachePolicy policy) {
            HTTPSessionManager manager(&network);
            manager.setCachePolicy(policy);
            ending.successes = 0;
            manager.GET(server.address(), {}, ending.success, ending.failure);
            TRY_COMPARE(ending.successes, 1);
        };
        // What is not asked for so is not kept either: it may hold secrets.
        get(HTTPSessionManager::CachePolicy::NoCache);
        get(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
        QCOMPARE(server.requests.size(), 2);
        get(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
        QCOMPARE(server.requests.size(), 2);
        get(HTTPSessionManager::CachePolicy::NoCache);
        QCOMPARE(server.requests.size(), 3);
    }

    //! Trust is the process's and cannot be taken back.
    void trustsAddedAuthoritiesOnly()
    {
        const auto reaches = [](const QString &address) {
            // A fresh one: a connection that was made before keeps the trust of its time.
            HTTPNetwork network;
            const HTTPSessionManager manager(&network);
            return answerOf<bool>([&](const auto &then) {
                manager.GET(
                    address, {}, [=](const auto &) { then(true); },
                    [=](const auto &, const auto &) { then(false); });
            });
        };
        PageServer server("127.0.0.1", PageServer::Tls::SelfSigned);
        PageServer stranger("127.0.0.1", PageServer::Tls::SelfSigned);
        server.setPage("/", "secret");
        stranger.setPage("/", "other");
        const QTemporaryDir folder;
        QFile pem(folder.filePath(u"authority.pem"_s));
        QVERIFY(ServerTrust::addAuthorities(pem.fileName()).startsWith(pem.fileName() + u": "_s));
        QVERIFY(pem.open(QIODevice::WriteOnly));
        QVERIFY(ServerTrust::addAuthorities(pem.fileName()).startsWith(pem.fileName() + u": "_s));
        QVERIFY(!reaches(server.url("/")));
        QVERIFY(server.requests().isEmpty());

        pem.write(server.certificate());
        pem.close();
        QCOMPARE(ServerTrust::addAuthorities(pem.fileName()), QString());
        QVERIFY(reaches(server.url("/")));
        QVERIFY(!reaches(stranger.url("/")));
        // The certificate names the address, not this name for it.
        QVERIFY(!reaches(u"https://localhost:%1/"_s.arg(server.port())));
        // As the web view asks.
        const QList unknown = QSslCertificate::fromData(stranger.certificate());
        QVERIFY(!ServerTrust::isTrusted(unknown, u"127.0.0.1"_s));
        QVERIFY(!ServerTrust::isTrusted({}, u"127.0.0.1"_s));
    }

    void writesNoLocalFile()
    {
        const QTemporaryDir folder;
        const QUrl file = QUrl::fromLocalFile(folder.filePath(u"part"_s));
        Ending ending;
        HTTPSessionManager(&m_network).PUT(file.toString(), "x", ending.success, ending.failure);
        TRY_COMPARE(ending.failures, 1);
        QVERIFY(!QFile::exists(file.toLocalFile()));
    }

private:
    HTTPNetwork m_network;
};

QTEST_GUILESS_MAIN(HTTPSessionManagerTest)
#include "HTTPSessionManagerTest.moc"
