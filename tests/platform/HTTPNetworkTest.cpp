#include "platform/http/HTTPNetwork.h"

#include "platform/HTTPOutcome.h"
#include "platform/WireServer.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "support/Table.h"

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

//! The one way to all servers, on the wire.
class HTTPNetworkTest : public QObject
{
    Q_OBJECT

private:
    using Method = HTTPRequest::Method;
    using Redirections = Table<Method, int, bool, QByteArray>;
    using Messages = Table<Method, QByteArray>;
    using Failures = Table<QByteArray, bool>;
    using Headers = Table<QByteArray, QByteArray, QByteArray>;
    using Waits = Table<int>;

    const QTemporaryDir m_folder;
    HTTPCookieStorage m_cookies {m_folder.filePath(u"cookies.json"_s)};
    HTTPNetwork m_network {&m_cookies};
    const HTTPSessionManager m_manager {&m_network};

private Q_SLOTS:
    void failsOnceAndLater_data()
    {
        Failures::rows({
            {"never answers", {}, false},
            {"is cancelled under way", {}, true},
            {"hangs up", "", false},
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

    // Over HTTP/2 the library repeats what a server refuses, unless a body is under way.
    void offersHttp2WhereNothingCanBeRepeated()
    {
        const std::tuple<Method, QByteArray, bool> rows[] {{Method::Get, "", true},
            {Method::Put, "p", true}, {Method::Post, "", false}, {Method::Put, "", false}};
        for (const auto &[method, body, isOffered] : rows) {
            QByteArray hello; // the client's, in which it names the protocols
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            connect(&server, &QTcpServer::newConnection, this, [&] {
                QTcpSocket *client = server.nextPendingConnection();
                connect(client, &QTcpSocket::readyRead, this, [&hello, client] {
                    hello += client->readAll();
                    client->abort();
                });
            });
            const QString address = u"https://127.0.0.1:%1/"_s.arg(server.serverPort());
            QVERIFY(send(m_manager, method, address, body).second != 0);
            QCOMPARE(hello.contains("\2h2\10http/1.1"), isOffered);
        }
    }

    void writesOneHeaderForEach_data()
    {
        const QByteArray name = "X-Sent";
        Headers::rows({
            {"a text", name, "a b", "X-Sent: a b\r\n"},
            {"nothing", name, "", "X-Sent:\r\n"},
            {"a blank", name, " ", "X-Sent:\r\n"},
            {"two lines", name, "a\r\nX-More: 1", {}},
            {"a line's end", name, "a\nX-More: 1", {}},
            {"a text's end", name, QByteArray("a\0b", 3), {}},
            {"two names", "X-Sent: a\nX-More", "1", {}},
            {"a cookie", "Cookie", "v", "; bad=v\r\n"},
            {"a cookie of two lines", "Cookie", "v\r\nX-More: 1", {}},
        });
    }

    void writesOneHeaderForEach()
    {
        const auto [name, value, arrives] = Headers::row();
        WireServer server(
            [](QTcpSocket &client, const QByteArray &) { client.write(answer(200)); });
        QTemporaryDir folder;
        HTTPCookieStorage cookies(folder.filePath(u"cookies.json"_s));
        HTTPNetwork network(&cookies);
        HTTPSessionManager manager(&network);
        if (name == "Cookie") {
            cookies.setCookiesFromUrl(
                {QNetworkCookie("good", "1"), QNetworkCookie("bad", value)}, server.address());
        } else {
            manager.setValueForHTTPHeaderField("1", "X-Other");
            manager.setValueForHTTPHeaderField(value, name);
        }
        QCOMPARE(send(manager, Method::Get, server.address()).second, 0);
        const QByteArray request = server.requests.value(0);
        QVERIFY2(request.contains(name == "Cookie" ? "Cookie: good=1" : "X-Other: 1\r\n"), request);
        QVERIFY2(!request.contains("X-More"), request);
        QCOMPARE(request.contains("X-Sent") || request.contains("bad="), !arrives.isNull());
        QVERIFY2(request.contains(arrives), request);
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
};

QTEST_GUILESS_MAIN(HTTPNetworkTest)
#include "HTTPNetworkTest.moc"
