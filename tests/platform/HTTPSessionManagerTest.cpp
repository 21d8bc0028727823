#include "platform/HTTPSessionManager.h"

#include "ScriptedServer.h"

#include <QBuffer>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto never = 60s;
constexpr auto soon = 200ms;

//! What a call came to. A second completion, or one from inside the call, shows in the counts.
struct Ending
{
    int successes = 0;
    int failures = 0;
    HTTPResponse response;
    HTTPError error;

    HTTPSuccess success()
    {
        return [this](const HTTPResponse &answer) {
            ++successes;
            response = answer;
        };
    }

    HTTPFailure failure()
    {
        return [this](const HTTPResponse &answer, const HTTPError &why) {
            ++failures;
            response = answer;
            error = why;
        };
    }
};

QByteArray answer(const QByteArray &status, const QByteArray &headers, const QByteArray &body)
{
    return "HTTP/1.1 " + status + "\r\n" + headers
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

}

class HTTPSessionManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void judgesAnAnswerByStatusAndType_data();
    void judgesAnAnswerByStatusAndType();
    void failsOnceAndLater_data();
    void failsOnceAndLater();
    void cancelEndsWithOneFailure_data();
    void cancelEndsWithOneFailure();
    void writesHeadersAndParameters();
    void putsTheDeviceFromItsPosition();
    void readsACopyBeforeItAsksTheServer();
    void joinsRepeatedHeaders();

private:
    QNetworkAccessManager m_network;
};

void HTTPSessionManagerTest::judgesAnAnswerByStatusAndType_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("good");

    const QByteArray json = "application/json";
    const QByteArray body = "{}";
    QTest::newRow("200") << "200 OK"_ba << json << body << true;
    QTest::newRow("201") << "201 Created"_ba << json << body << true;
    QTest::newRow("204, no body, no type") << "204 No Content"_ba << ""_ba << ""_ba << true;
    QTest::newRow("299") << "299 Odd"_ba << json << body << true;
    QTest::newRow("300 without a place to go") << "300 Choices"_ba << json << body << false;
    QTest::newRow("400") << "400 Bad Request"_ba << json << body << false;
    QTest::newRow("404") << "404 Not Found"_ba << json << body << false;
    QTest::newRow("500") << "500 Error"_ba << json << body << false;
    QTest::newRow("503") << "503 Later"_ba << json << body << false;
    QTest::newRow("type with a parameter")
        << "200 OK"_ba << "application/json; charset=utf-8"_ba << body << true;
    QTest::newRow("type in capitals") << "200 OK"_ba << "Application/JSON"_ba << body << true;
    QTest::newRow("unwanted type") << "200 OK"_ba << "image/png"_ba << body << false;
    QTest::newRow("no type") << "200 OK"_ba << ""_ba << body << false;
    QTest::newRow("unwanted type of nothing") << "200 OK"_ba << "image/png"_ba << ""_ba << true;
}

void HTTPSessionManagerTest::judgesAnAnswerByStatusAndType()
{
    QFETCH(QByteArray, status);
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, body);
    QFETCH(bool, good);

    const QByteArray typeHeader = type.isEmpty() ? type : "Content-Type: " + type + "\r\n";
    ScriptedServer server(answer(status, typeHeader, body));
    HTTPSessionManager manager(&m_network);
    manager.setAcceptableContentTypes({"application/json", "text/html"});
    Ending ending;
    manager.GET(server.address(), {}, ending.success(), ending.failure());

    QTRY_COMPARE(ending.successes + ending.failures, 1);
    QCOMPARE(ending.successes == 1, good);
    QCOMPARE(ending.error.code == 0, good);
    QCOMPARE(ending.response.statusCode, status.first(3).toInt());
    QCOMPARE(ending.response.body, body);
}

void HTTPSessionManagerTest::failsOnceAndLater_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("error");

    const QString served;
    const QByteArray nothing;
    QTest::newRow("nobody listens")
        << u"http://127.0.0.1:1/"_s << nothing << int(QNetworkReply::ConnectionRefusedError);
    QTest::newRow("never answers") << served << nothing << int(QNetworkReply::OperationCanceledError);
    QTest::newRow("hangs up") << served << ""_ba << int(QNetworkReply::RemoteHostClosedError);
    QTest::newRow("hangs up in the head")
        << served << "HTTP/1.1 200 OK\r\nContent-Le"_ba << int(QNetworkReply::RemoteHostClosedError);
    QTest::newRow("hangs up in the body")
        << served << "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"code\":200}"_ba
        << int(QNetworkReply::RemoteHostClosedError);
    QTest::newRow("talks something else")
        << served << "SSH-2.0-OpenSSH_9.2\r\n\r\n"_ba << int(QNetworkReply::RemoteHostClosedError);
    QTest::newRow("no address") << u"/do?"_s << nothing
                                << int(QNetworkReply::ProtocolUnknownError);
    QTest::newRow("no such scheme")
        << u"gopher://127.0.0.1/"_s << nothing << int(QNetworkReply::ProtocolUnknownError);
}

void HTTPSessionManagerTest::failsOnceAndLater()
{
    QFETCH(QString, address);
    QFETCH(QByteArray, bytes);
    QFETCH(int, error);

    ScriptedServer server(bytes, ScriptedServer::Then::Close);
    HTTPSessionManager manager(&m_network);
    manager.setTimeoutInterval(bytes.isNull() ? soon : std::chrono::milliseconds(never));
    Ending ending;
    HTTPTask *task = manager.GET(
        address.isNull() ? server.address() : address, {}, ending.success(), ending.failure());
    QCOMPARE(ending.failures, 0);

    QSignalSpy gone(task, &QObject::destroyed);
    QTRY_COMPARE(gone.size(), 1);
    QCOMPARE(ending.failures, 1);
    QCOMPARE(ending.successes, 0);
    QCOMPARE(ending.error.code, error);
}

void HTTPSessionManagerTest::cancelEndsWithOneFailure_data()
{
    QTest::addColumn<bool>("underWay");
    QTest::newRow("at once") << false;
    QTest::newRow("while the server thinks") << true;
}

void HTTPSessionManagerTest::cancelEndsWithOneFailure()
{
    QFETCH(bool, underWay);
    ScriptedServer server;
    Ending ending;
    HTTPTask *task
        = HTTPSessionManager(&m_network).GET(server.address(), {}, ending.success(), ending.failure());
    if (underWay)
        QTRY_COMPARE(server.requests.size(), 1);
    task->cancel();
    task->cancel();
    QCOMPARE(ending.failures, 0);

    QSignalSpy gone(task, &QObject::destroyed);
    QTRY_COMPARE(gone.size(), 1);
    QCOMPARE(ending.failures, 1);
    QCOMPARE(ending.successes, 0);
    QCOMPARE(ending.error.code, int(QNetworkReply::OperationCanceledError));
}

void HTTPSessionManagerTest::writesHeadersAndParameters()
{
    ScriptedServer server(answer("200 OK", {}, "x"));
    HTTPSessionManager manager(&m_network);
    manager.setValueForHTTPHeaderField("vant-ios;client-st;", "User-Agent");
    Ending ending;
    const HTTPParameters parameters {{u"b"_s, u"密 &+="_s}, {u"a"_s, 7}, {u"nil"_s, QString()}};

    manager.GET(server.address(u"/do?"_s), parameters, ending.success(), ending.failure());
    QTRY_COMPARE(ending.successes, 1);
    const QByteArray got = server.requests.takeFirst();
    QVERIFY2(got.startsWith("GET /do?a=7&b=%E5%AF%86%20%26%2B%3D HTTP/1.1\r\n"), got);
    QVERIFY2(got.contains("User-Agent: vant-ios;client-st;\r\n"), got);

    manager.POST(server.address(u"/do"_s), parameters, ending.success(), ending.failure());
    QTRY_COMPARE(ending.successes, 2);
    const QByteArray posted = server.requests.takeFirst();
    QVERIFY2(posted.startsWith("POST /do HTTP/1.1\r\n"), posted);
    QVERIFY2(posted.contains("Content-Type: application/x-www-form-urlencoded\r\n"), posted);
    QVERIFY2(posted.endsWith("\r\n\r\na=7&b=%E5%AF%86%20%26%2B%3D"), posted);
}

void HTTPSessionManagerTest::putsTheDeviceFromItsPosition()
{
    ScriptedServer server(answer("200 OK", {}, {}));
    QByteArray part(300'000, 'p');
    QByteArray content = "the part before" + part;
    QBuffer body(&content);
    QVERIFY(body.open(QIODevice::ReadOnly));
    body.seek(content.size() - part.size());
    Ending ending;
    HTTPTask *task = HTTPSessionManager(&m_network)
                         .PUT(server.address(), &body, ending.success(), ending.failure());
    QSignalSpy progress(task, &HTTPTask::uploadProgress);

    QTRY_COMPARE(ending.successes, 1);
    QVERIFY(server.requests.first().startsWith("PUT / HTTP/1.1\r\n"));
    QCOMPARE(server.requests.first().split('\n').last(), part);
    QVERIFY(progress.contains(QVariantList {qint64(part.size()), qint64(part.size())}));
}

void HTTPSessionManagerTest::readsACopyBeforeItAsksTheServer()
{
    const QTemporaryDir folder;
    QNetworkAccessManager network;
    auto *cache = new QNetworkDiskCache;
    cache->setCacheDirectory(folder.path());
    network.setCache(cache);
    ScriptedServer server(answer("200 OK", "Cache-Control: max-age=60\r\n", "picture"));
    HTTPSessionManager manager(&network);
    manager.setCachePolicy(HTTPSessionManager::CachePolicy::ReturnCacheDataElseLoad);
    Ending ending;
    for (const int answers : {1, 2}) {
        manager.GET(server.address(), {}, ending.success(), ending.failure());
        QTRY_COMPARE(ending.successes, answers);
        QCOMPARE(ending.response.statusCode, 200);
        QCOMPARE(ending.response.body, "picture");
        QCOMPARE(server.requests.size(), 1);
    }
}

void HTTPSessionManagerTest::joinsRepeatedHeaders()
{
    ScriptedServer server(
        answer("200 OK", "Set-Cookie: mo=1\r\nSet-Cookie: tmo=2\r\n", {}));
    Ending ending;
    HTTPSessionManager(&m_network).GET(server.address(), {}, ending.success(), ending.failure());
    QTRY_COMPARE(ending.successes, 1);
    QCOMPARE(ending.response.header("set-cookie"), "mo=1, tmo=2");
    QCOMPARE(ending.response.header("Content-Length"), "0");
    QVERIFY(ending.response.header("X-Absent").isNull());
}

QTEST_GUILESS_MAIN(HTTPSessionManagerTest)
#include "HTTPSessionManagerTest.moc"
