#include "platform/HTTPOutcome.h"
#include "platform/WireServer.h"
#include "support/Table.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/engine/PageErrors.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! What a user sees of a load that is slow or fails, and of a page that hangs.
class LoadingTest : public QObject
{
    Q_OBJECT

private:
    using Failures = Table<QByteArray, QString, bool>;

    std::unique_ptr<PageHarness> m_page;
    std::unique_ptr<PageErrors> m_errors;

    //! The page runs a script that does not end.
    void hang()
    {
        m_page->evaluate(u"setTimeout(() => { while (true); }); 0"_s);
        m_page->webView.inputGiven();
    }

private Q_SLOTS:
    void init()
    {
        m_page = std::make_unique<PageHarness>();
        m_errors = std::make_unique<PageErrors>(&m_page->webView, &m_page->pageHost);
    }
    void cleanup()
    {
        m_errors.reset();
        m_page.reset();
    }

    void saysWhatHappened_data()
    {
        Failures::rows({
            {"a status without a page", answer(502, {}, ""), u"服务器错误 502"_s, false},
            {"a status with a page", answer(404, {}, "<title>none</title>nothing here"), {}, false},
            {"nobody listens", "refused", u"无法连接服务器"_s, true},
            {"hangs up", "", u"服务器没有回应"_s, true},
            {"a certificate nobody vouches for", "secret", u"服务器的证书不可信"_s, false},
        });
    }

    void saysWhatHappened()
    {
        const auto [bytes, reason, isOfNetwork] = Failures::row();
        WireServer server([&bytes = bytes](QTcpSocket &client, const QByteArray &) {
            client.write(bytes);
            client.disconnectFromHost();
        });
        PageServer secret("127.0.0.1", PageServer::Tls::SelfSigned);
        QString address = bytes == "secret" ? secret.url("/") : server.address();
        if (bytes == "refused")
            server.close();
        if (!reason.isNull())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be loaded"_s));
        int retries = 0;
        connect(m_errors->state(), &ErrorViewState::retry, this, [&retries] { ++retries; });
        m_page->webView.load(QUrl(address));
        if (reason.isNull()) {
            QVERIFY(waitForTitle(m_page->webView, u"none"_s));
            QVERIFY(!m_errors->state()->isVisible());
            return;
        }
        TRY_VERIFY(m_errors->state()->isVisible());
        QCOMPARE(m_errors->state()->reason(), reason);
        using Status = NetworkReachabilityManager::Status;
        for (const Status status : {Status::NotReachable, Status::ReachableViaWiFi})
            m_page->reachability.become(status);
        QCOMPARE(retries, isOfNetwork ? 1 : 0);
    }

    void isNeverWhiteWithoutEnd()
    {
        QVERIFY(m_page->loadPage("<title>first</title>x"));
        WireServer silent([](QTcpSocket &, const QByteArray &) {});
        const LoadWatch *loading = m_page->webView.loading();
        m_page->webView.load(QUrl(silent.address()));
        TRY_COMPARE(silent.requests.size(), 1);
        m_page->mainQueue.advance(499ms);
        QVERIFY(!loading->isSlow());
        m_page->mainQueue.advance(1ms);
        QVERIFY(loading->isSlow());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be loaded"_s));
        m_page->mainQueue.advance(29s);
        QVERIFY(!m_errors->state()->isVisible());
        m_page->mainQueue.advance(500ms);
        QCOMPARE(m_errors->state()->reason(), u"服务器没有回应"_s);
        QVERIFY(m_errors->state()->isVisible() && !loading->isSlow());
        QVERIFY(m_page->loadPage("<title>after</title>x"));
        QVERIFY(!m_errors->state()->isVisible());
        m_page->mainQueue.advance(60s);
        QVERIFY(!loading->isSlow() && !m_errors->state()->isVisible());
    }

    void aPageThatHangsIsWaitedForOrLoadedAnew()
    {
        QVERIFY(m_page->loadPage("<title>portal</title>x"));
        // What the load has asked is answered before this. An idle page is asked nothing.
        m_page->evaluate(u"0"_s);
        QSignalSpy scripts(&m_page->webView, &WebView::scriptRequested);
        m_page->mainQueue.advance(600s);
        QCOMPARE(scripts.size(), 0);
        QVERIFY(!m_page->alert->isVisible());

        hang();
        m_page->mainQueue.advance(9s);
        QVERIFY(!m_page->alert->isVisible());
        for (const auto wait : {1s, 10s}) {
            m_page->mainQueue.advance(wait);
            QCOMPARE(m_page->alert->title(), u"页面没有响应"_s);
            if (wait == 1s)
                m_page->alert->press(0);
        }
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the page's process has ended"_s));
        m_page->alert->press(1);
        QVERIFY(waitForTitle(m_page->webView, u"portal"_s));
        QVERIFY(!m_page->alert->isVisible() && !m_errors->state()->isVisible());
    }

    void aPageThatWaitsForItsUserDoesNotHang()
    {
        QVERIFY(m_page->loadPage("<title>portal</title>x"));
        m_page->evaluate(u"setTimeout(() => alert('well?')); 0"_s);
        TRY_VERIFY(m_page->alert->isVisible());
        m_page->webView.inputGiven();
        m_page->mainQueue.advance(60s);
        m_page->alert->press(0);
        QVERIFY(!m_page->alert->isVisible());
    }
};

VANT_WEB_TEST_MAIN(LoadingTest)
#include "LoadingTest.moc"
