#include "platform/WireServer.h"
#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"

using namespace Qt::StringLiterals;

//! The way of pages to the network. The engine reads the environment once, so this is a process of
//! its own.
class ProxyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesGoThroughTheProxyOfTheEnvironment()
    {
        const QByteArray page = "<title>through</title>";
        WireServer proxy([&](QTcpSocket &client, const QByteArray &request) {
            client.write(request.startsWith("CONNECT")
                    ? "HTTP/1.1 403 No\r\nContent-Length: 0\r\n\r\n"
                    : "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: "
                        + QByteArray::number(page.size()) + "\r\n\r\n" + page);
        });
        // A desktop's own setting would come first.
        qunsetenv("XDG_CURRENT_DESKTOP");
        for (const char *name : {"http_proxy", "https_proxy"})
            qputenv(name, proxy.address().toUtf8());
        qputenv("no_proxy", "near.invalid");
        const auto asked = [&] {
            QByteArrayList lines;
            for (const QByteArray &request : std::as_const(proxy.requests))
                lines << request.left(request.indexOf('\r'));
            return lines;
        };
        PageHarness harness;
        QSignalSpy failed(&harness.webView, &WebView::didFailNavigation);
        harness.webView.load(QUrl(u"http://near.invalid/a"_s));
        TRY_VERIFY(!failed.isEmpty());
        QVERIFY(harness.loadPage("<title>direct</title>"));
        QVERIFY(waitForTitle(harness.webView, u"direct"_s));
        QCOMPARE(asked(), {});
        QVERIFY(harness.load(u"http://far.invalid/a"_s));
        QVERIFY(waitForTitle(harness.webView, u"through"_s));
        QCOMPARE(asked().value(0), "GET http://far.invalid/a HTTP/1.1"_ba);
        harness.webView.load(QUrl(u"https://far.invalid/a"_s));
        TRY_VERIFY(asked().contains("CONNECT far.invalid:443 HTTP/1.1"_ba));
    }
};

VANT_WEB_TEST_MAIN(ProxyTest)
#include "ProxyTest.moc"
