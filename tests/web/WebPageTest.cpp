#include "platform/transport/ServerTrust.h"
#include "support/PageServer.h"
#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/secondary/OMOutLinkLandscapeViewController.h"
#include "web/secondary/OMOutLinkViewController.h"
#include "web/secondary/SecondaryPages.h"

#include <QInputMethod>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! What pages may do to the window around them, and whom they may start.
class WebPageTest : public QObject
{
    Q_OBJECT

private:
    PageServer m_foreign {"127.0.0.2"};
    std::unique_ptr<PageHarness> m_page;

    //! Shows a screen of the pages beside the home container.
    static void show(QQuickView &window, ViewController &controller, const QString &screen)
    {
        window.engine()->addImportPath(u"qrc:/qt/qml"_s);
        window.setInitialProperties({{u"controller"_s, QVariant::fromValue(&controller)}});
        window.setResizeMode(QQuickView::SizeRootObjectToView);
        window.setSource(QUrl(u"qrc:/qt/qml/Vant/Web/%1.qml"_s.arg(screen)));
        window.show();
        window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&window, patienceMs));
        controller.viewDidLoad();
    }

private Q_SLOTS:
    void init() { m_page = std::make_unique<PageHarness>(); }
    void cleanup() { m_page.reset(); }

    void onlyTouchesAndTheMainFrameStartProgramsAndOneASecond()
    {
        const QByteArray frame = "<script>"
                                 "location.href = 'tel:1';"
                                 "setTimeout(() => window.open('tel:2'), 100);"
                                 "setTimeout(() => { const a = document.createElement('a');"
                                 "  a.href = 'tel:3'; a.target = '_blank'; document.body.append(a);"
                                 "  a.click() }, 200);"
                                 "setTimeout(() => parent.postMessage('done', '*'), 300)"
                                 "</script>";
        m_page->page(frame, "/frame.html");
        m_foreign.setPage("/frame.html", frame);
        m_page->urlOpener.schemes << u"tel"_s;
        QVERIFY(m_page->loadPage("<a id=call href=tel:4>x</a>"
                                 "<a href=tel:5 target=_blank style='position: absolute; left: 0;"
                                 "  top: 0; width: 100px; height: 100px'>y</a>"
                                 "<iframe src=/frame.html></iframe><iframe src='"
            + m_foreign.url("/frame.html").toUtf8()
            + "'></iframe>"
              "<script>let done = 0; onmessage = () => ++done; let calls = 0;"
              "function callOften() {"
              "  const timer = setInterval(() => { document.getElementById('call').click();"
              "    if (++calls === 20) clearInterval(timer) }, 5) }"
              "</script>"));
        TRY_COMPARE(m_page->evaluate(u"done"_s).toInt(), 2);
        m_page->evaluate(u"callOften()"_s);
        TRY_COMPARE(m_page->evaluate(u"calls"_s).toInt(), 20);
        QList<QUrl> opened {QUrl(u"tel:4"_s)};
        TRY_COMPARE(m_page->urlOpener.opened, opened);
        m_page->mainQueue.advance(1s);
        QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {50, 50});
        opened << QUrl(u"tel:5"_s);
        TRY_COMPARE(m_page->urlOpener.opened, opened);
    }

    void linksOfPagesBesideTheHomeContainerWorkToo()
    {
        m_page->page("<title>other</title>", "/other.html");
        m_page->urlOpener.schemes << u"tel"_s;
        OMOutLinkViewController controller(m_page->profiles.outLink(), &m_page->pageHost);
        controller.urlStr = m_page->page("<title>first</title><a id=call href=tel:1>x</a>"
                                         "<a id=blank href=/other.html target=_blank>y</a>");
        QQuickView window;
        window.resize(390, 844);
        show(window, controller, u"OutLinkScreen"_s);
        QVERIFY(waitForTitle(*controller.webView(), u"first"_s));
        evaluateIn(*controller.webView(), u"document.getElementById('call').click()"_s);
        TRY_COMPARE(m_page->urlOpener.opened, QList {QUrl(u"tel:1"_s)});
        evaluateIn(*controller.webView(), u"document.getElementById('blank').click()"_s);
        QVERIFY(waitForTitle(*controller.webView(), u"other"_s));
    }

    // Each of them ends the program.
    void thePickersThatTheEngineDoesNotSurviveAreNotThere()
    {
        QVERIFY(m_page->loadPage("x"));
        for (const char *picker :
            {"showOpenFilePicker", "showSaveFilePicker", "showDirectoryPicker"})
            QCOMPARE(m_page->evaluate(u"typeof window.%1"_s.arg(QLatin1StringView(picker))),
                QVariant(u"undefined"_s));
        // What the environment tells the engine stays.
        const QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
        QVERIFY(flags.contains("FileSystemAccess") && flags.contains("--disable-quic"));
    }

    void onePageIsOpenedAtATime()
    {
        Navigator *navigator = m_page->shell.navigator();
        SecondaryPages pages(navigator, &m_page->profiles, &m_page->pageHost, &m_page->mainQueue);
        for (int i = 0; i < 30; ++i)
            pages.jump2Outlink(u"http://127.0.0.1/"_s, QString::number(i), {});
        pages.jump2OutlinkLandscape(u"http://127.0.0.1/"_s);
        QCOMPARE(navigator->screens()->count(), 1);
        QCOMPARE(navigator->topViewController()->title(), u"0"_s);
        navigator->dismiss(navigator->topViewController());
        pages.jump2OutlinkLandscape(u"http://127.0.0.1/"_s);
        pages.jump2Outlink(u"http://127.0.0.1/"_s, u"late"_s, {});
        QCOMPARE(navigator->screens()->count(), 1);
        // An agreement may be read whatever the portal has opened.
        for (int i = 0; i < 2; ++i)
            pages.openOutLinkPage(u"http://127.0.0.1/"_s, {});
        QCOMPARE(navigator->screens()->count(), 2);
    }

    void addedAuthoritiesVouchForTheirServersByNameOnly()
    {
        PageServer secret("127.0.0.1", PageServer::Tls::SelfSigned);
        secret.setPage("/", "<title>secret</title>");
        QFile pem(m_page->folder.filePath(u"ca.pem"_s));
        QVERIFY(pem.open(QIODevice::WriteOnly) && pem.write(secret.certificate()) > 0);
        pem.close();
        QCOMPARE(ServerTrust::addAuthorities(pem.fileName()), QString());
        QVERIFY(m_page->load(secret.url("/")));
        QVERIFY(waitForTitle(m_page->webView, u"secret"_s));
        QSignalSpy failed(&m_page->webView, &WebView::didFailNavigation);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"a page could not be loaded"_s));
        m_page->webView.load(QUrl(secret.url("/").replace(u"127.0.0.1"_s, u"localhost"_s)));
        TRY_COMPARE(failed.size(), 1);
        QCOMPARE(secret.requestsFor("/").size(), 1);
    }

    void aDialogGoesWithItsDocument_data()
    {
        using Leave = std::function<void(PageHarness &)>;
        QTest::addColumn<Leave>("leave");
        QTest::newRow("another page") << Leave([](PageHarness &page) {
            page.webView.load(QUrl(page.page("<title>other</title>", "/other.html")));
        });
        QTest::newRow("reload") << Leave([](PageHarness &page) { page.webView.reload(); });
        QTest::newRow("dead process") << Leave([](PageHarness &page) { page.killRenderer(); });
    }

    void aDialogGoesWithItsDocument()
    {
        QFETCH(const std::function<void(PageHarness &)>, leave);
        QVERIFY(m_page->loadPage("<title>first</title><script>if (!localStorage.asked)"
                                 "  setTimeout(() => alert(localStorage.asked = 1), 100);"
                                 "else document.title = 'other'</script>"));
        TRY_VERIFY(m_page->alert->isVisible());
        leave(*m_page);
        TRY_VERIFY(!m_page->alert->isVisible());
        QVERIFY(waitForTitle(m_page->webView, u"other"_s));
    }

    void aDialogGoesWithItsView()
    {
        {
            WebView webView(m_page->profile.engineProfile(), nullptr, &m_page->pageHost);
            webView.dialogs()->showAlert({}, u"x"_s);
            QVERIFY(m_page->alert->isVisible());
        }
        QVERIFY(!m_page->alert->isVisible());
    }

    void aDialogNamesTheHostThatAsks_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("title");
        m_foreign.setPage("/frame.html", "<script>alert(1)</script>");
        QTest::newRow("page") << "<script>alert(1)</script>"_ba << u"%1"_s; // its own
        QTest::newRow("foreign frame") << "<iframe src='" + m_foreign.url("/frame.html").toUtf8()
                + "'></iframe>" << u"127.0.0.2:%1"_s.arg(m_foreign.port());
        QTest::newRow("frame without a host")
            << "<iframe src='data:text/html,<script>alert(1)</script>'></iframe>"_ba << u"网页"_s;
    }

    void aDialogNamesTheHostThatAsks()
    {
        QFETCH(const QByteArray, content);
        m_page->webView.load(QUrl(m_page->page(content)));
        TRY_VERIFY(m_page->alert->isVisible());
        QFETCH(const QString, title);
        QCOMPARE(m_page->alert->title(), QString(title).replace(u"%1"_s, m_page->host()));
    }

    void whoHasSeenThreeDialogsInARowMayRefuseTheRest()
    {
        const QStringList plain {u"取消"_s, u"确定"_s};
        const QStringList refusable = QStringList {u"不再显示"_s} + plain;
        const auto nextButtons = [this] {
            return waitFor([this] { return m_page->alert->isVisible(); }) ? m_page->alert->buttons()
                                                                          : QStringList();
        };
        const QString url = m_page->page("<script>const answers = [];"
                                         "onclick = () => { for (let i = 0; i < 5; ++i)"
                                         "  answers.push(Number(confirm(i))) };</script>");
        QVERIFY(m_page->load(url));
        const auto ask
            = [this] { m_page->webView.evaluateJavaScript(u"document.documentElement.click()"_s); };
        const auto answers = [this] { return m_page->evaluate(u"answers.join('')"_s); };

        // The back key is a no to this one, and time ends a row.
        ask();
        for (const auto &buttons : {plain, plain, refusable, plain, plain}) {
            QCOMPARE(nextButtons(), buttons);
            QVERIFY(m_page->alert->cancel());
            if (buttons == refusable)
                m_page->mainQueue.advance(3s);
        }
        QCOMPARE(answers(), u"00000"_s);

        QVERIFY(m_page->load(url));
        for (int i = 0; i < 2; ++i) {
            ask();
            for (int dialog = 0; i == 0 && dialog < 3; ++dialog) {
                QCOMPARE(nextButtons(), dialog < 2 ? plain : refusable);
                m_page->alert->press(dialog < 2 ? 1 : 0);
            }
        }
        QCOMPARE(answers(), u"1100000000"_s);

        QVERIFY(m_page->load(url));
        ask();
        QCOMPARE(nextButtons(), plain);
    }

    void theLandscapePageLoadsAgainWhenItIsTurnedAndNotForAKeyboard()
    {
        m_page->window.hide();
        OMOutLinkLandscapeViewController controller(
            m_page->profiles.landscape(), &m_page->pageHost, &m_page->mainQueue, [](bool) {});
        controller.urlStr
            = m_page->page("<title>field</title><input id=i style='position: absolute;"
                           "  left: 0; top: 0; width: 200px; height: 100px'>",
                "/field.html");
        QSignalSpy loads(controller.webView(), &WebView::loadRequested);
        QQuickView window;
        window.resize(844, 390);
        show(window, controller, u"LandscapeScreen"_s);
        QVERIFY(waitForTitle(*controller.webView(), u"field"_s));
        const auto shows = [&](QSize size) {
            window.resize(size);
            const QSize inside = size.width() < size.height() ? size.transposed() : size;
            const QString shown = u"%1x%2"_s.arg(inside.width()).arg(inside.height());
            return waitFor([&] {
                return evaluateIn(*controller.webView(), u"innerWidth + 'x' + innerHeight"_s)
                    == shown;
            });
        };
        const auto becomes = [&](QSize size, int count) {
            if (!shows(size))
                return false;
            m_page->mainQueue.advance(200ms);
            // A load is made with the next turn.
            QCoreApplication::processEvents();
            return loads.size() == count && waitForTitle(*controller.webView(), u"field"_s);
        };
        const auto typing
            = [] { return QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool(); };
        // A view that has just come may miss a click.
        QVERIFY(waitFor([&] {
            QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 50});
            return waitFor(typing, 1000);
        }));
        QVERIFY(becomes({844, 200}, 1));
        evaluateIn(*controller.webView(), u"document.getElementById('i').blur()"_s);
        TRY_VERIFY(!typing());
        // It goes bit by bit.
        QVERIFY(shows({844, 300}));
        QVERIFY(becomes({844, 390}, 1));
        QVERIFY(becomes({390, 844}, 2));
        QVERIFY(becomes({390, 700}, 3));
    }
};

VANT_WEB_TEST_MAIN(WebPageTest)
#include "WebPageTest.moc"
