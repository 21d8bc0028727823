#include "platform/HTTPCookieStorage.h"
#include "support/ManualMainQueue.h"
#include "support/PageServer.h"
#include "ui/NavigationController.h"
#include "ui/UiHarness.h"
#include "web/OLMiniProgramStyleViewController.h"
#include "web/OMOutLinkLandscapeViewController.h"
#include "web/OMOutLinkViewController.h"
#include "web/PageAddress.h"
#include "web/PageHarness.h"
#include "web/PageHost.h"
#include "web/SecondaryPageProfiles.h"
#include "web/WebPageProfile.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

Q_IMPORT_QML_PLUGIN(Vant_WebPlugin)

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! The pages beside the home container, as the navigator shows them, in the real engine.
class SecondaryPagesTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PageServer> m_server;
    std::unique_ptr<UiHarness> m_ui;
    std::unique_ptr<PageHost> m_host;
    std::unique_ptr<HTTPCookieStorage> m_cookies;
    std::unique_ptr<WebPageProfile> m_mini;
    std::unique_ptr<WebPageProfile> m_landscape;
    std::unique_ptr<WebPageProfile> m_outLink;
    QList<bool> m_landscapeScreen;

    void show(ViewController *page, const QString &screen)
    {
        page->setTitle(u"校园公告"_s);
        QVERIFY(m_ui->shell.navigator()->present(screen, page));
    }

    OLMiniProgramStyleViewController *openMini(const QString &urlStr, const QString &color = {})
    {
        auto *page = new OLMiniProgramStyleViewController(m_mini.get(), m_host.get());
        page->urlStr = urlStr;
        page->naviColor = color;
        show(page, u"MiniProgramScreen"_s);
        return page;
    }

    OMOutLinkLandscapeViewController *openLandscape(const QString &urlStr)
    {
        auto *page = new OMOutLinkLandscapeViewController(m_landscape.get(), m_host.get(),
            &m_ui->queue, [this](bool landscape) { m_landscapeScreen << landscape; });
        page->urlStr = urlStr;
        show(page, u"LandscapeScreen"_s);
        return page;
    }

    OMOutLinkViewController *openPlain(const QString &urlStr, const QString &html = {})
    {
        auto *page = new OMOutLinkViewController(m_outLink.get(), m_host.get());
        page->urlStr = urlStr;
        page->htmlStr = html;
        page->statusColor = u"#3355cc"_s;
        show(page, u"OutLinkScreen"_s);
        return page;
    }

    // The page as it stands in the view, once it has the title.
    static bool waitForTitle(WebPageViewController *page, const QString &title)
    {
        return QTest::qWaitFor(
            [page, title] {
                return evaluateIn(*page->webView(),
                           u"document.readyState == 'complete' ? document.title : ''"_s)
                           .toString()
                    == title;
            },
            patienceMs);
    }

    bool isOpen(ViewController *page) const
    {
        return m_ui->shell.navigator()->topViewController() == page;
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<PageServer>();
        m_server->setPage("/a b{1}.html",
            "<!doctype html><meta name=viewport content='width=device-width'><title>page</title>"
            "<h2 id=size></h2><iframe src=/frame.html></iframe><script>"
            "document.getElementById('size').textContent = `校园公告 ${innerWidth}×${innerHeight}`;"
            "onclick = event => { touch = event };"
            "function call(name, data) { WebViewJavascriptBridge.callHandler(name, data) }"
            "</script>");
        m_server->setPage("/frame.html", "<title>frame</title>");
        m_cookies = std::make_unique<HTTPCookieStorage>(m_folder.filePath(u"cookies.json"_s));
        QNetworkCookie login("mo", "m1");
        login.setDomain(u"127.0.0.1"_s);
        login.setPath(u"/"_s);
        m_cookies->setCookie(login);
        m_mini = SecondaryPageProfiles::miniProgram(m_folder.filePath(u"m"_s), m_cookies.get());
        m_landscape = SecondaryPageProfiles::landscape(m_folder.filePath(u"l"_s), m_cookies.get());
        m_outLink = SecondaryPageProfiles::outLink(m_folder.filePath(u"o"_s), m_cookies.get());
        m_ui = std::make_unique<UiHarness>();
        m_host = std::make_unique<PageHost>(&m_ui->shell, m_folder.path());
        m_ui->shell.safeArea()->setInsets(u"47,34"_s);
        Navigator *navigator = m_ui->shell.navigator();
        navigator->setAnimated(false);
        for (const QString &screen :
            {u"MiniProgramScreen"_s, u"LandscapeScreen"_s, u"OutLinkScreen"_s})
            navigator->registerScreen(screen, QUrl(u"qrc:/qt/qml/Vant/Web/%1.qml"_s.arg(screen)));
        m_ui->showRootView();
        m_landscapeScreen.clear();
    }

    void cleanup()
    {
        m_ui.reset();
        // Screens that were still open go when control returns to the event loop.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_outLink.reset();
        m_landscape.reset();
        m_mini.reset();
    }

    void escapesAddresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("escaped");
        QTest::addColumn<QByteArray>("fourteen");
        const auto row = [](const char *text, const char *escaped, const char *fourteen) {
            QTest::addRow("%s", text) << u"http://h/"_s + QString::fromUtf8(text)
                                      << "http://h/"_ba + escaped << "http://h/"_ba + fourteen;
        };
        row("a b{1}", "a%20b%7B1%7D", "a%20b%7B1%7D");
        row("a%20b", "a%20b", "a%2520b");
        row("50%", "50%25", "50%25");
        row("?q=学&r=\"x\"#top", "?q=%E5%AD%A6&r=%22x%22#top", "?q=%E5%AD%A6&r=%22x%22%23top");
        row("`^|\\<>", "%60%5E%7C%5C%3C%3E", "%60%5E%7C%5C%3C%3E");
        row("?a[1]=;,+@!~", "?a[1]=;,+@!~", "?a%5B1%5D=;,+@!~");
    }

    void escapesAddresses()
    {
        QFETCH(const QString, text);
        QTEST(PageAddress::escaped(text).toEncoded(), "escaped");
        QTEST(PageAddress::withFourteenEscaped(text).toEncoded(), "fourteen");
    }

    void aMiniProgramPageHasItsCapsuleItsBridgeAndTheShellsCookies()
    {
        auto *page = openMini(m_server->url("/a b{1}.html"));
        QVERIFY(waitForTitle(page, u"page"_s));
        TRY_COMPARE(m_server->requestsFor("/frame.html").size(), 1);
        const auto request = m_server->requestsFor("/a b{1}.html").constFirst();
        QCOMPARE(request.cookie(), "mo=m1"_ba);
        static const QRegularExpression agent(
            u"^Mozilla/5\\.0 .*Chrome.* Mozilla/5\\.0 \\(iPhone; CPU iPhone OS [0-9_]+ like Mac "
            "OS X\\) AppleWebKit/604\\.4\\.7 \\(KHTML, like Gecko\\) Mobile/15C153 VANT-IOS "
            "iphone$"_s);
        const QString sent = QString::fromLatin1(request.headers["user-agent"]);
        QVERIFY2(agent.match(sent).hasMatch(), qPrintable(sent));

        const auto strip = [this] { return m_ui->view.grabWindow().pixelColor(5, 5); };
        TRY_COMPARE(strip(), QColor(u"#3dd187"_s));
        evaluateIn(*page->webView(), u"call('changeStatusColor', {color: '#ff0000'})"_s);
        TRY_COMPARE(strip(), QColor(Qt::red));

        m_ui->click(m_ui->itemWithText(u"菜单"_s));
        TRY_VERIFY(m_ui->itemWithText(u"   刷新"_s));
        QTest::mouseClick(&m_ui->view, Qt::LeftButton, {}, {100, 500});
        TRY_VERIFY(!m_ui->itemWithText(u"   刷新"_s));
        QCOMPARE(m_server->requestsFor("/a b{1}.html").size(), 1);
        m_ui->click(m_ui->itemWithText(u"菜单"_s));
        TRY_VERIFY(m_ui->itemWithText(u"   刷新"_s));
        QSignalSpy loaded(page->webView(), &WebView::didFinishNavigation);
        m_ui->click(m_ui->itemWithText(u"   刷新"_s));
        TRY_COMPARE(loaded.size(), 1);
        QCOMPARE(m_server->requestsFor("/a b{1}.html").size(), 2);
        QVERIFY(!page->isMenuVisible());

        m_ui->click(m_ui->itemWithText(u"菜单"_s));
        QVERIFY2(m_ui->shell.back() && isOpen(page), "the back key takes the menu away first");
        page->webView()->evaluateJavaScript(u"call('logout'); call('closeOutLinkPage')"_s);
        TRY_VERIFY(!isOpen(page));
    }

    void aLandscapePageLiesOnItsSideAndLoadsAgainWithItsSize()
    {
        auto *page = openLandscape(m_server->url("/a b{1}.html"));
        QVERIFY(waitForTitle(page, u"page"_s));
        QCOMPARE(m_landscapeScreen, QList {true});
        const auto size = [page] {
            return evaluateIn(*page->webView(), u"innerWidth + 'x' + innerHeight"_s).toString();
        };
        TRY_COMPARE(size(), u"763x390"_s);
        const auto request = m_server->requestsFor("/a b{1}.html").constFirst();
        QCOMPARE(request.cookie(), "mo=m1"_ba);
        QVERIFY(request.headers["user-agent"].endsWith(" VANT-IOS iphone"));
        QVERIFY(!request.headers["user-agent"].contains("iPhone OS"));
        QTest::mouseClick(&m_ui->view, Qt::LeftButton, {}, {90, 547});
        // The turn makes halves of pixels.
        const QString isThere = u"Math.hypot(touch.clientX - 500, touch.clientY - 300) < 2"_s;
        TRY_VERIFY(evaluateIn(*page->webView(), isThere).toBool());
        m_ui->queue.advance(1s);
        QCOMPARE(m_server->requestsFor("/a b{1}.html").size(), 1);

        for (const QSize &wide : {QSize(800, 390), QSize(844, 390)}) {
            m_ui->view.resize(wide);
            TRY_COMPARE(size(), u"%1x309"_s.arg(wide.width()));
            m_ui->queue.advance(100ms);
        }
        QSignalSpy loaded(page->webView(), &WebView::didFinishNavigation);
        m_ui->queue.advance(100ms);
        TRY_COMPARE(loaded.size(), 1);
        QCOMPARE(m_server->requestsFor("/a b{1}.html").size(), 2);
        page->webView()->evaluateJavaScript(u"call('backLastVC')"_s);
        TRY_VERIFY(!isOpen(page));
        QCOMPARE(m_landscapeScreen, (QList {true, false}));
    }

    void aLandscapePageThatCannotBeLoadedCanBeLeft()
    {
        auto *page = openLandscape(u"portal/index.html"_s);
        TRY_VERIFY(m_ui->itemWithText(u"返回"_s));
        m_ui->click(m_ui->itemWithText(u"返回"_s));
        TRY_VERIFY(!isOpen(page));
        QCOMPARE(m_landscapeScreen, (QList {true, false}));
    }

    void aPlainPageShowsAnAddressOrATextAndHasNoBridge()
    {
        m_server->setPage("/2.html", "<title>second</title>second");
        auto *page = openPlain(m_server->url("/a b{1}.html"));
        QVERIFY(waitForTitle(page, u"page"_s));
        QCOMPARE(
            evaluateIn(*page->webView(), u"typeof WebViewJavascriptBridge + typeof window.qt"_s),
            u"undefinedundefined"_s);
        evaluateIn(*page->webView(), u"location.href = '/2.html'"_s);
        QVERIFY(waitForTitle(page, u"second"_s));
        page->swiped({100, 400}, {300, 400}, 390);
        page->swiped({5, 400}, {95, 300}, 390);
        QVERIFY(waitForTitle(page, u"second"_s));
        page->swiped({5, 400}, {200, 420}, 390);
        QVERIFY(waitForTitle(page, u"page"_s));
        page->swiped({388, 400}, {200, 420}, 390);
        QVERIFY(waitForTitle(page, u"second"_s));
        m_ui->click(m_ui->itemWithText(u"返回"_s));
        TRY_VERIFY(!isOpen(page));

        const auto requests = m_server->requests().size();
        page = openPlain(m_server->url("/2.html"), u"<title>text</title><p>一段文字</p>"_s);
        QVERIFY(waitForTitle(page, u"text"_s));
        QCOMPARE(m_server->requests().size(), requests);
    }
};

int main(int argc, char *argv[])
{
    QtWebEngineQuick::initialize();
    QGuiApplication application(argc, argv);
    SecondaryPagesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SecondaryPagesTest.moc"
