#include "platform/http/HTTPNetwork.h"

#include "platform/WireServer.h"
#include "platform/http/HTTPQuery.h"
#include "platform/http/HTTPSessionManager.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "platform/transport/ServerTrust.h"
#include "support/PageServer.h"
#include "support/Table.h"

#include <QSslCertificate>
#include <QTimer>

#include <dlfcn.h>
#include <netdb.h>

#include <semaphore>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString slowName = QStringLiteral("slow.invalid");
std::counting_semaphore<2> slowAnswer {0};
std::counting_semaphore<2> slowQuestion {0};

}

//! The system's resolver, but for one name: it is asked for until the test lets the answer come.
extern "C" int getaddrinfo(
    const char *name, const char *service, const addrinfo *hints, addrinfo **found)
{
    if (name && slowName == QLatin1StringView(name)) {
        slowQuestion.release();
        slowAnswer.acquire();
        return EAI_NONAME;
    }
    static const auto system
        = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return system(name, service, hints, found);
}

namespace {

QByteArray answer(int status, const QByteArray &headers = {}, const QByteArray &body = "x")
{
    return "HTTP/1.1 " + QByteArray::number(status) + " S\r\nContent-Length: "
        + QByteArray::number(body.size()) + "\r\n" + headers + "\r\n" + body;
}

QByteArray location(const QString &address)
{
    return "Location: " + address.toUtf8() + "\r\n";
}

//! What came of a request: the answer, and the error's number.
using Outcome = std::pair<HTTPResponse, int>;
using Method = HTTPRequest::Method;

Outcome send(const HTTPSessionManager &manager, Method method, const QString &address,
    const QByteArray &body = "b=1")
{
    return answerOf<Outcome>([&](const auto &then) {
        const auto success = [then](const HTTPResponse &response) { then({response, 0}); };
        const auto failure = [then](const HTTPResponse &response, const HTTPError &error) {
            then({response, error.code});
        };
        const auto parameters = body.isEmpty() ? HTTPParameters() : HTTPParameters {{u"b"_s, 1}};
        if (method == Method::Get)
            manager.GET(address, {}, success, failure);
        else if (method == Method::Post)
            manager.POST(address, parameters, success, failure);
        else
            manager.PUT(address, body, success, failure);
    });
}

}

//! The one way to all servers, on the wire.
class HTTPNetworkTest : public QObject
{
    Q_OBJECT

private:
    using Redirections = Table<Method, int, bool, QByteArray>;
    using Messages = Table<Method, QByteArray>;
    using Failures = Table<QByteArray, bool>;
    using Waits = Table<int>;

    const QTemporaryDir m_folder;
    HTTPCookieStorage m_cookies {m_folder.filePath(u"cookies.json"_s)};
    HTTPNetwork m_network {&m_cookies, m_folder.filePath(u"kept"_s)};
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
        WireServer server([&](QTcpSocket &client, const QByteArray &) {
            if (bytes.isNull())
                return;
            client.write(bytes);
            client.disconnectFromHost();
        });
        HTTPSessionManager manager(&m_network);
        manager.setTimeoutInterval(bytes.isNull() && !cancel ? 200ms : 60'000ms);
        int successes = 0;
        QList<int> errors;
        HTTPTask *task = manager.GET(
            server.address(), {}, [&](const auto &) { ++successes; },
            [&](const auto &, const HTTPError &error) { errors << error.code; });
        QSignalSpy gone(task, &QObject::destroyed);
        if (cancel) {
            TRY_COMPARE(server.requests.size(), 1);
            task->cancel();
            task->cancel();
        }
        QCOMPARE(errors.size(), 0);
        TRY_COMPARE(gone.size(), 1);
        QVERIFY(errors.size() == 1 && errors[0] != 0 && successes == 0);
    }

    void outlivesWhatItsAnswerEnds()
    {
        auto *network = new HTTPNetwork;
        HTTPSessionManager manager(network);
        manager.setAcceptsDataAddresses();
        auto held = std::make_shared<int>();
        const std::weak_ptr<int> seen = held;
        std::optional<bool> isHeld;
        manager.GET(
            u"data:,x"_s, {},
            [&seen, &isHeld, network, held = std::move(held)](const auto &) {
                const auto &watched = seen;
                auto &result = isHeld;
                delete network;
                result = !watched.expired();
            },
            [](auto &&...) {});
        TRY_VERIFY(isHeld.has_value());
        QVERIFY(*isHeld && seen.expired());
    }

    void followsWhereItMay_data()
    {
        const QByteArray nothing;
        QTest::addColumn<Redirections::Row>("row");
        for (const int status : {301, 302, 303, 307, 308}) {
            const bool repeats = status >= 307;
            const auto row = [status](const char *name, Method method, bool isSame,
                                 const QByteArray &arrives) {
                QTest::addRow("%s %d", name, status)
                    << Redirections::Row(method, status, isSame, arrives);
            };
            row("GET", Method::Get, true, "GET");
            row("GET elsewhere", Method::Get, false, "GET");
            row("POST", Method::Post, true, repeats ? "POST b=1" : "GET");
            row("POST elsewhere", Method::Post, false, nothing);
            row("PUT", Method::Put, true, repeats ? "PUT b=1" : nothing);
            row("PUT elsewhere", Method::Put, false, nothing);
        }
    }

    void followsWhereItMay()
    {
        const auto [method, status, isSameOrigin, arrives] = Redirections::row();
        const QByteArray end = answer(200, "Set-Cookie: last=1\r\n");
        WireServer other([&](QTcpSocket &client, const QByteArray &) { client.write(end); });
        QString target = other.address(u"/t"_s);
        WireServer server([&, status = status](QTcpSocket &client, const QByteArray &request) {
            client.write(request.contains(" /t ")
                    ? end
                    : answer(status, location(target) + "Set-Cookie: hop=1\r\n"));
        });
        if (isSameOrigin)
            target = server.address(u"/t"_s);
        HTTPSessionManager manager(&m_network);
        manager.setValueForHTTPHeaderField("secret", "Authorization");
        const Outcome outcome = send(manager, method, server.address());

        const QByteArrayList reached = isSameOrigin ? server.requests.mid(1) : other.requests;
        QCOMPARE(outcome.second == 0, !arrives.isNull());
        QCOMPARE(reached.size(), arrives.isNull() ? 0 : 1);
        if (arrives.isNull())
            return;
        QVERIFY2(reached[0].startsWith(arrives.split(' ')[0] + " /t "), reached[0]);
        QVERIFY2(reached[0].endsWith("\r\n\r\n" + (arrives.split(' ') << "")[1]), reached[0]);
        QCOMPARE(reached[0].contains("Authorization: secret"), isSameOrigin);
        // Of the host, whose ports share them.
        QVERIFY(reached[0].contains("hop=1"));
        QCOMPARE(outcome.first.header("Set-Cookie"), "last=1"_ba);
        QVERIFY(m_cookies.holdsCookieNamed({"last"}));
    }

    void turnsOnlySoOften()
    {
        WireServer server([](QTcpSocket &client, const QByteArray &) {
            client.write(answer(302, location(u"/again"_s)));
        });
        QVERIFY(send(m_manager, Method::Get, server.address()).second != 0);
        QCOMPARE(server.requests.size(), 11);
    }

    // A kept connection that closes without an answer: whether the message arrived nobody knows.
    void sendsNothingTwice_data()
    {
        Messages::rows({
            {"a form", Method::Post, "b=1"},
            {"an empty form", Method::Post, ""},
            {"a part", Method::Put, QByteArray(300'000, 'p')},
            {"an empty part", Method::Put, ""},
        });
    }

    void sendsNothingTwice()
    {
        const auto [method, body] = Messages::row();
        WireServer server([](QTcpSocket &client, const QByteArray &request) {
            if (request.startsWith("GET"))
                client.write(answer(200));
            else
                client.abort();
        });
        QCOMPARE(send(m_manager, Method::Get, server.address()).second, 0);
        QVERIFY(send(m_manager, method, server.address(), body).second != 0);
        QCOMPARE(server.requests.size(), 2);
    }

    void takesOnlySoLong_data()
    {
        Waits::rows({
            {"comes in drops", 0},
            {"waits for a connection", 6},
        });
    }

    void takesOnlySoLong()
    {
        const auto [others] = Waits::row();
        WireServer server([](QTcpSocket &client, const QByteArray &) {
            client.write("HTTP/1.1 200 OK\r\n\r\n");
            auto *drip = new QTimer(&client);
            connect(drip, &QTimer::timeout, &client, [&client] { client.write("x"); });
            drip->start(20ms);
        });
        HTTPNetwork network;
        HTTPSessionManager manager(&network);
        for (int other = 0; other < others; ++other)
            manager.GET(
                server.address(), {}, [](const auto &) {}, [](auto &&...) {});
        TRY_COMPARE(server.requests.size(), others);
        manager.setWholeTime(300ms);
        QVERIFY(send(manager, Method::Get, server.address()).second != 0);
    }

    void unpacksOnlySoMuch()
    {
        const QByteArray zeros(4'000'000, '\0');
        const QByteArray packed = qCompress(zeros).sliced(4); // the length in front
        WireServer server([&](QTcpSocket &client, const QByteArray &) {
            client.write(answer(200, "Content-Encoding: deflate\r\n", packed));
        });
        HTTPSessionManager manager(&m_network);
        QCOMPARE(send(manager, Method::Get, server.address()).first.body, zeros);
        manager.setMaximumBodySize(zeros.size() - 1);
        QVERIFY(send(manager, Method::Get, server.address()).second != 0);
    }

    // Its end neither waits for the name, nor do others wait for its end.
    void aNameThatNobodyKnowsHoldsUpNobody()
    {
        WireServer server(
            [](QTcpSocket &client, const QByteArray &) { client.write(answer(200)); });
        QList<int> errors;
        {
            HTTPNetwork brief;
            HTTPTask *task = HTTPSessionManager(&brief).GET(
                u"http://%1/"_s.arg(slowName), {}, [](const auto &) {},
                [&](const auto &, const HTTPError &error) { errors << error.code; });
            QVERIFY(slowQuestion.try_acquire_for(std::chrono::milliseconds(patienceMs)));
            task->cancel();
            QCOMPARE(send(HTTPSessionManager(&brief), Method::Get, server.address()).second, 0);
            TRY_COMPARE(errors.size(), 1);
            HTTPSessionManager(&brief).GET(
                u"http://%1/"_s.arg(slowName), {}, [](const auto &) {},
                [&](const auto &, const HTTPError &error) { errors << error.code; });
            QVERIFY(slowQuestion.try_acquire_for(std::chrono::milliseconds(patienceMs)));
        }
        QCOMPARE(errors.size(), 1);
        // The threads that ask are nobody's any more.
        slowAnswer.release();
        slowAnswer.release();
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
        qunsetenv("http_proxy");
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
        const QUrl here = QUrl::fromLocalFile(m_folder.filePath(u"cookies.json"_s));
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

QTEST_GUILESS_MAIN(HTTPNetworkTest)
#include "HTTPNetworkTest.moc"
