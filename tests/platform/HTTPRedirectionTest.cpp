#include "platform/WireServer.h"
#include "platform/http/HTTPNetwork.h"
#include "platform/storage/HTTPCookieStorage.h"
#include "support/Table.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

//! Where a server may send a request on to, and what goes along.
class HTTPRedirectionTest : public QObject
{
    Q_OBJECT

private:
    using Redirections = Table<Method, int, bool, QByteArray>;

    const QTemporaryDir m_folder;
    HTTPCookieStorage m_cookies {m_folder.filePath(u"cookies.json"_s)};
    HTTPNetwork m_network {&m_cookies};

private Q_SLOTS:
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
        QVERIFY(send(HTTPSessionManager(&m_network), Method::Get, server.address()).second != 0);
        QCOMPARE(server.requests.size(), 11);
    }
};

QTEST_GUILESS_MAIN(HTTPRedirectionTest)
#include "HTTPRedirectionTest.moc"
