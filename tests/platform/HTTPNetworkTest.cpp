#include "platform/http/HTTPNetwork.h"

#include "platform/http/HTTPSessionManager.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "support/Patience.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

//! A server on loopback that answers each request as it is told to; null: it hangs up without a
//! word.
class WireServer : public QTcpServer
{
public:
    using Script = std::function<QByteArray(const QByteArray &request)>;

    explicit WireServer(Script answer)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer] {
                m_unread[socket] += socket->readAll();
                if (!isWhole(m_unread[socket]))
                    return;
                requests << std::exchange(m_unread[socket], {});
                const QByteArray bytes = answer(requests.last());
                if (bytes.isNull())
                    return socket->abort();
                socket->write(bytes);
            });
        });
    }

    QString address(const QString &path = u"/"_s) const
    {
        return u"http://127.0.0.1:%1"_s.arg(serverPort()) + path;
    }

    QByteArrayList requests;

private:
    static bool isWhole(const QByteArray &request)
    {
        const qsizetype end = request.indexOf("\r\n\r\n");
        const qsizetype at = request.toLower().indexOf("content-length: ");
        const qsizetype size = at < 0
            ? 0
            : request.sliced(at + 16, request.indexOf('\r', at) - at - 16).toLongLong();
        return end >= 0 && request.size() >= end + 4 + size;
    }

    QHash<QTcpSocket *, QByteArray> m_unread;
};

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

}

//! What the one way to all servers does on the wire.
class HTTPNetworkTest : public QObject
{
    Q_OBJECT

private:
    using Method = HTTPRequest::Method;

    const QTemporaryDir m_folder;
    HTTPCookieStorage m_cookies {m_folder.filePath(u"cookies.json"_s)};
    HTTPNetwork m_network {&m_cookies, m_folder.filePath(u"kept"_s)};

    Outcome send(const HTTPSessionManager &manager, Method method, const QString &address,
        const QByteArray &body = "b=1")
    {
        return answerOf<Outcome>([&](const auto &then) {
            const auto success = [then](const HTTPResponse &response) { then({response, 0}); };
            const auto failure = [then](const HTTPResponse &response, const HTTPError &error) {
                then({response, error.code});
            };
            if (method == Method::Get)
                manager.GET(address, {}, success, failure);
            else if (method == Method::Post)
                manager.POST(address,
                    body.isEmpty() ? HTTPParameters() : HTTPParameters {{u"b"_s, 1}}, success,
                    failure);
            else
                manager.PUT(address, body, success, failure);
        });
    }

private Q_SLOTS:
    void followsWhereItMay_data()
    {
        QTest::addColumn<Method>("method");
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("isSameOrigin");
        QTest::addColumn<QByteArray>("arrives"); // null: nothing does
        const QByteArray nothing;
        for (const int status : {301, 302, 303, 307, 308}) {
            const bool repeats = status >= 307;
            const auto row = [status](const char *name, Method method, bool isSame,
                                 const QByteArray &arrives) {
                QTest::addRow("%s %d", name, status) << method << status << isSame << arrives;
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
        QFETCH(const Method, method);
        QFETCH(const int, status);
        QFETCH(const bool, isSameOrigin);
        QFETCH(const QByteArray, arrives);
        WireServer other([](const QByteArray &) { return answer(200, "Set-Cookie: last=1\r\n"); });
        QString target = other.address(u"/t"_s);
        WireServer server([&](const QByteArray &request) {
            return request.contains(" /t ")
                ? answer(200, "Set-Cookie: last=1\r\n")
                : answer(status, location(target) + "Set-Cookie: hop=1\r\n");
        });
        if (isSameOrigin)
            target = server.address(u"/t"_s);
        HTTPSessionManager manager(&m_network);
        manager.setValueForHTTPHeaderField("secret", "Authorization");
        const Outcome outcome = send(manager, method, server.address());

        const QByteArrayList reached
            = isSameOrigin ? server.requests.mid(1) : QByteArrayList(other.requests);
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
        WireServer server([&](const QByteArray &) { return answer(302, location(u"/again"_s)); });
        QVERIFY(send(HTTPSessionManager(&m_network), Method::Get, server.address()).second != 0);
        QCOMPARE(server.requests.size(), 11);
    }

    // A kept connection that closes without an answer: whether the message arrived nobody knows.
    void sendsNothingTwice_data()
    {
        QTest::addColumn<Method>("method");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("a form") << Method::Post << "b=1"_ba;
        QTest::newRow("an empty form") << Method::Post << ""_ba;
        QTest::newRow("a part") << Method::Put << QByteArray(300'000, 'p');
        QTest::newRow("an empty part") << Method::Put << ""_ba;
    }

    void sendsNothingTwice()
    {
        QFETCH(const Method, method);
        QFETCH(const QByteArray, body);
        WireServer server([](const QByteArray &request) {
            return request.startsWith("GET") ? answer(200) : QByteArray();
        });
        const HTTPSessionManager manager(&m_network);
        QCOMPARE(send(manager, Method::Get, server.address()).second, 0);
        QVERIFY(send(manager, method, server.address(), body).second != 0);
        QCOMPARE(server.requests.size(), 2);
    }

    void takesOnlySoLong()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        connect(&server, &QTcpServer::newConnection, this, [&server] {
            QTcpSocket *socket = server.nextPendingConnection();
            socket->write("HTTP/1.1 200 OK\r\n\r\n");
            auto *drip = new QTimer(socket);
            connect(drip, &QTimer::timeout, socket, [socket] { socket->write("x"); });
            drip->start(20ms);
        });
        HTTPSessionManager manager(&m_network);
        manager.setWholeTime(300ms);
        QElapsedTimer timer;
        timer.start();
        const QString address = u"http://127.0.0.1:%1/"_s.arg(server.serverPort());
        QVERIFY(send(manager, Method::Get, address).second != 0);
        QVERIFY(timer.elapsed() < patienceMs);
    }

    void unpacksOnlySoMuch()
    {
        const QByteArray zeros(4'000'000, '\0');
        QByteArray packed = qCompress(zeros).sliced(4); // without the length in front: zlib's form
        WireServer server([&](const QByteArray &) {
            return answer(200, "Content-Encoding: deflate\r\n", packed);
        });
        HTTPSessionManager manager(&m_network);
        const Outcome whole = send(manager, Method::Get, server.address());
        QCOMPARE(whole.first.body, zeros);
        manager.setMaximumBodySize(zeros.size() - 1);
        QVERIFY(send(manager, Method::Get, server.address()).second != 0);
    }

    void keepsPictures()
    {
        QString target;
        int served = 0;
        WireServer server([&](const QByteArray &request) {
            if (request.contains(" /p "))
                return answer(302, location(target));
            ++served;
            return answer(200, "Cache-Control: no-cache, must-revalidate\r\n", "picture");
        });
        target = server.address(u"/q"_s);
        const QString address = server.address(u"/p"_s);
        HTTPSessionManager manager(&m_network);
        manager.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
        for (int time = 0; time < 2; ++time)
            QCOMPARE(send(manager, Method::Get, address).first.body, "picture"_ba);
        QCOMPARE(served, 1);
        // A file that was cut off is none, and is written anew.
        const QDir kept(m_folder.filePath(u"kept"_s));
        for (const QString &name : kept.entryList(QDir::Files)) {
            QFile file(kept.filePath(name));
            QVERIFY(file.resize(file.size() - 2));
        }
        for (int time = 0; time < 2; ++time)
            QCOMPARE(send(manager, Method::Get, address).first.body, "picture"_ba);
        QCOMPARE(served, 2);
    }

    void goesThroughTheProxyOfTheEnvironment()
    {
        WireServer proxy([](const QByteArray &) { return answer(200); });
        qputenv("http_proxy", proxy.address().toUtf8());
        const Outcome outcome
            = send(HTTPSessionManager(&m_network), Method::Get, u"http://school.invalid/a"_s);
        qunsetenv("http_proxy");
        QCOMPARE(outcome.second, 0);
        QVERIFY(proxy.requests.value(0).startsWith("GET http://school.invalid/a HTTP/1.1\r\n"));
    }

    void readsNoOtherAddresses()
    {
        const HTTPSessionManager manager(&m_network);
        const QString content = u"data:text/plain;base64,eA=="_s;
        QCOMPARE(send(manager, Method::Get, content).first.body, "x"_ba);
        QFile file(m_folder.filePath(u"own"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (const QString &address : {QUrl::fromLocalFile(file.fileName()).toString(),
                 u"qrc:/assets/logo.png"_s, u"ftp://127.0.0.1/x"_s, u"data:no comma"_s})
            QVERIFY2(send(manager, Method::Get, address).second != 0, qPrintable(address));
    }
};

QTEST_GUILESS_MAIN(HTTPNetworkTest)
#include "HTTPNetworkTest.moc"
