#include "platform/HTTPOutcome.h"
#include "platform/WireServer.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/http/HTTPQuery.h"
#include "platform/transport/ServerTrust.h"
#include "support/PageServer.h"

#include <QSslCertificate>

using namespace Qt::StringLiterals;

//! Which addresses are answered, by whom.
class HTTPAddressTest : public QObject
{
    Q_OBJECT

private:
    using Method = HTTPRequest::Method;

    const QTemporaryDir m_folder;
    HTTPNetwork m_network {nullptr, m_folder.filePath(u"kept"_s)};
    const HTTPSessionManager m_manager {&m_network};

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

    void keepsPicturesAlone()
    {
        QString target;
        int served = 0;
        WireServer server([&](QTcpSocket &client, const QByteArray &request) {
            if (request.contains(" /p "))
                return (void)client.write(answer(302, location(target)));
            ++served;
            client.write(answer(200, "Cache-Control: no-cache, must-revalidate\r\n", "picture"));
        });
        target = server.address(u"/q"_s);
        const QString address = server.address(u"/p"_s);
        HTTPSessionManager pictures(&m_network);
        pictures.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
        const auto get = [&](const HTTPSessionManager &manager, int servedThen) {
            QCOMPARE(send(manager, Method::Get, address).first.body, "picture"_ba);
            QCOMPARE(served, servedThen);
        };
        // What is not asked for so is not kept either: it may hold secrets.
        get(m_manager, 1);
        get(pictures, 2);
        get(pictures, 2);
        get(m_manager, 3);
        // A file that was cut off is none, and is written anew.
        const QDir kept(m_folder.filePath(u"kept"_s));
        for (const QString &name : kept.entryList(QDir::Files)) {
            QFile file(kept.filePath(name));
            QVERIFY(file.resize(file.size() - 2));
        }
        get(pictures, 4);
        get(pictures, 4);
    }

    void goesThroughTheProxyOfTheEnvironment()
    {
        WireServer proxy([](QTcpSocket &client, const QByteArray &) { client.write(answer(200)); });
        qputenv("http_proxy", proxy.address().toUtf8());
        const Outcome outcome = send(m_manager, Method::Get, u"http://school.invalid/a"_s);
        const Outcome ofThisDevice = send(m_manager, Method::Get, proxy.address());
        qunsetenv("http_proxy");
        QCOMPARE(ofThisDevice.second, 0);
        QVERIFY(proxy.requests.value(1).startsWith("GET / HTTP/1.1\r\n"));
        QCOMPARE(outcome.second, 0);
        QVERIFY(proxy.requests.value(0).startsWith("GET http://school.invalid/a HTTP/1.1\r\n"));
    }

    void knowsNoOtherAddresses()
    {
        const QString content = u"data:text/plain;base64,eA=="_s;
        QVERIFY(send(m_manager, Method::Get, content).second != 0);
        HTTPSessionManager manager(&m_network);
        manager.setAcceptsDataAddresses();
        QCOMPARE(send(manager, Method::Get, content).first.body, "x"_ba);
        const QUrl file = QUrl::fromLocalFile(m_folder.filePath(u"own"_s));
        QVERIFY(send(manager, Method::Put, file.toString()).second != 0);
        QVERIFY(!QFile::exists(file.toLocalFile()));
        const QUrl here = QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
        for (const QString &address : {here.toString(), u"qrc:/assets/logo.png"_s,
                 u"ftp://127.0.0.1/x"_s, u"data:no comma"_s, u"/do?"_s})
            QVERIFY2(send(manager, Method::Get, address).second != 0, qPrintable(address));
    }

    //! Trust is the process's and cannot be taken back.
    void trustsAddedAuthoritiesOnly()
    {
        const auto reaches = [](const QString &address) {
            // A fresh one: authorities count for networks that are made later.
            HTTPNetwork network;
            return send(HTTPSessionManager(&network), Method::Get, address).second == 0;
        };
        PageServer server("127.0.0.1", PageServer::Tls::SelfSigned);
        PageServer stranger("127.0.0.1", PageServer::Tls::SelfSigned);
        server.setPage("/", "secret");
        stranger.setPage("/", "other");
        QFile pem(m_folder.filePath(u"authority.pem"_s));
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
};

QTEST_GUILESS_MAIN(HTTPAddressTest)
#include "HTTPAddressTest.moc"
