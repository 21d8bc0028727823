#include "support/Patience.h"
#include "support/Table.h"
#include "web/HomeHarness.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/secondary/SecondaryPages.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! Pages as their authors mean them: languages, fonts, widths, windows, and what they keep.
class PageMannersTest : public QObject
{
    Q_OBJECT

private:
    PageServer m_foreign {"127.0.0.2"};
    std::unique_ptr<PageHarness> m_page;

private Q_SLOTS:
    void init() { m_page = std::make_unique<PageHarness>(); }
    void cleanup() { m_page.reset(); }

    void chineseIsAskedForFirst()
    {
        QVERIFY(m_page->loadPage("x"));
        QCOMPARE(m_page->server.requestsFor("/page.html").first().headers["accept-language"],
            "zh-CN,zh;q=0.9,en;q=0.8"_ba);
        QCOMPARE(m_page->evaluate(u"navigator.languages.join()"_s), u"zh-CN,zh,en"_s);
    }

    void latinAndChineseAreOfOneFont_data()
    {
        Table<QString, QString>::rows({
            {"sans-serif", u"sans-serif"_s, u"Noto Sans CJK SC"_s},
            {"serif", u"serif"_s, u"Noto Serif CJK SC"_s},
            {"a font by its name", u"'DejaVu Sans', sans-serif"_s, u"DejaVu Sans"_s},
        });
    }

    void latinAndChineseAreOfOneFont()
    {
        const auto [asked, drawn] = Table<QString, QString>::row();
        QVERIFY(m_page->loadPage("<script>function width(family) {"
                                 "  const c = document.createElement('canvas').getContext('2d');"
                                 "  c.font = '100px ' + family;"
                                 "  return c.measureText('0123456789 Wig').width }</script>"));
        const auto width = [this](const QString &family) {
            return m_page->evaluate(u"width(\"%1\")"_s.arg(family)).toDouble();
        };
        QCOMPARE(width(asked), width(u"'%1'"_s.arg(drawn)));
        QVERIFY(width(u"'DejaVu Sans'"_s) != width(u"'Noto Sans CJK SC'"_s));
    }

    void aPageHasTheWidthItNames_data()
    {
        Table<QByteArray, int, int>::rows({
            {"its own", "<meta name=viewport content='initial-scale=1, width=750'>"_ba, 390, 750},
            {"the device's", "<meta name=viewport content='width=device-width'>"_ba, 390, 390},
            {"none", {}, 390, 390},
            {"less than there is", "<meta name=Viewport content='width=750'>"_ba, 1000, 1000},
        });
    }

    void aPageHasTheWidthItNames()
    {
        const auto [meta, width, shown] = Table<QByteArray, int, int>::row();
        m_page->window.resize(width, 844);
        const auto inner = [this] { return m_page->evaluate(u"innerWidth"_s).toInt(); };
        // The size of one page is not the next one's.
        for (const QByteArray &before : {"<meta name=viewport content='width=1200'>"_ba, ""_ba}) {
            QVERIFY(m_page->loadPage(before));
            TRY_COMPARE(inner(), before.isEmpty() ? width : 1200);
        }
        QVERIFY(m_page->loadPage(meta + "x"));
        TRY_VERIFY(std::abs(inner() - shown) <= 1);
    }

    void aPageThatAnotherOpenedMayCloseItself_data()
    {
        // What is run, and which page it leads to.
        Table<QStringList>::rows({
            {"opened", {u"open('/b.html')>b"_s, u"close()>a"_s}},
            {"blank target", {u"document.getElementById('a').click()>b"_s, u"close()>a"_s}},
            {"gone on from", {u"open('/b.html')>b"_s, u"location = '/c.html'>c"_s, u"close()>a"_s}},
            {"one from another",
                {u"open('/b.html')>b"_s, u"open('/c.html')>c"_s, u"close()>b"_s, u"close()>a"_s}},
            {"not opened", {u"location = '/b.html'>b"_s, u"close()>b"_s}},
            {"come again by a link",
                {u"open('/b.html')>b"_s, u"close()>a"_s, u"location = '/c.html'>c"_s,
                    u"close()>c"_s}},
        });
    }

    void aPageThatAnotherOpenedMayCloseItself()
    {
        const auto [steps] = Table<QStringList>::row();
        for (const QByteArray &name : {"a"_ba, "b"_ba, "c"_ba, "first"_ba})
            m_page->page("<title>" + name + "</title><a id=a target=_blank href=/b.html>x</a>",
                '/' + name + ".html");
        QVERIFY(m_page->load(m_page->server.url("/first.html")));
        QVERIFY(m_page->load(m_page->server.url("/a.html")));
        for (const QString &step : steps) {
            QSignalSpy stepped(&m_page->webView, &WebView::historyStepRequested);
            m_page->webView.evaluateJavaScript(step.section(u'>', 0, 0));
            QVERIFY2(waitForTitle(m_page->webView, step.section(u'>', 1)), qPrintable(step));
            const bool isRefused = step == steps.last() && step != u"close()>a";
            if (isRefused) // by the next page's end the request has come
                QVERIFY(m_page->load(m_page->server.url("/first.html")));
            QCOMPARE(stepped.isEmpty(), isRefused || !step.startsWith(u"close()"));
        }
    }

    void foreignPagesGoToTheBrowser()
    {
        m_foreign.setPage("/f.html", "<title>foreign</title>");
        const QString foreign = m_foreign.url("/f.html");
        m_page->server.setPage("/redirect", {}, "text/html", {"Location: " + foreign.toUtf8()});
        m_page->foreignHost = u"127.0.0.2"_s;
        QVERIFY(m_page->loadPage("<title>own</title><iframe src='" + foreign.toUtf8()
            + "'></iframe><a id=a target=_blank href='" + foreign.toUtf8() + "'>x</a>"));
        QVERIFY(!m_foreign.requestsFor("/f.html").isEmpty());
        QVERIFY2(m_page->urlOpener.opened.isEmpty(), "a frame is no page");
        QList<QUrl> opened;
        for (const QString &way : {u"location = '%1'"_s, u"open('%1')"_s,
                 u"location = '/redirect'"_s, u"document.getElementById('a').click()"_s}) {
            m_page->evaluate(way.contains(u'%') ? way.arg(foreign) : way);
            opened << QUrl(foreign);
            TRY_COMPARE(m_page->urlOpener.opened, opened);
            m_page->mainQueue.advance(1s);
        }
        m_page->webView.load(QUrl(foreign));
        QCOMPARE(m_page->urlOpener.opened.size(), opened.size() + 1);
        SecondaryPages pages(
            m_page->shell.navigator(), &m_page->profiles, &m_page->pageHost, &m_page->mainQueue);
        pages.jump2Outlink(foreign, {}, {});
        pages.jump2OutlinkLandscape(foreign);
        pages.openOutLinkPage(foreign, {});
        QCOMPARE(m_page->shell.navigator()->screens()->count(), 0);
        QCOMPARE(m_foreign.requestsFor("/f.html").size(), 1);
        QVERIFY(waitForTitle(m_page->webView, u"own"_s));
        // The view goes on.
        QVERIFY(m_page->load(m_page->page("<title>next</title>", "/next.html")));
    }

    void theDeploymentSaysWhereForeignPagesAreShown_data()
    {
        Table<bool, QString, bool>::rows({
            {"here", true, u"here"_s, false},
            {"in the browser", true, u"browser"_s, true},
            {"nobody is foreign", false, u"browser"_s, false},
        });
    }

    void theDeploymentSaysWhereForeignPagesAreShown()
    {
        const auto [trusts, place, inBrowser] = Table<bool, QString, bool>::row();
        m_foreign.setPage("/f.html", "<title>foreign</title>");
        const QUrl foreign(m_foreign.url("/f.html"));
        const QStringList own {QUrl(m_page->server.url("")).toString()};
        HomeHarness home(trusts ? own : QStringList(), place);
        home.setPortal(m_page->page("<title>portal</title>"));
        home.show();
        QVERIFY(home.waitForPage(u"portal"_s));
        home.evaluate(u"location = '%1'"_s.arg(foreign.toString()));
        if (inBrowser)
            TRY_COMPARE(home.stage.urlOpener.opened, QList {foreign});
        QVERIFY(home.waitForPage(inBrowser ? u"portal"_s : u"foreign"_s));
        QCOMPARE(home.stage.urlOpener.opened.isEmpty(), !inBrowser);
    }

    void whatAPageKeepsIsTheUsers()
    {
        const QByteArray worker = "onfetch = e => { if (e.request.url.endsWith('/offline'))"
                                  "  e.respondWith(new Response('from the worker')) };"
                                  "onactivate = e => e.waitUntil(clients.claim())";
        m_page->server.setPage("/worker.js", worker, "text/javascript");
        const QString url = m_page->page("<title>keeper</title>");
        const QString keep
            = u"window.kept = ''; new Promise((done, failed) => {"
              "  const r = indexedDB.open('db', 1);"
              "  r.onupgradeneeded = () => r.result.createObjectStore('s');"
              "  r.onsuccess = () => { const t = r.result.transaction('s', 'readwrite');"
              "    t.objectStore('s').put('marks', 1); t.oncomplete = done };"
              "  r.onerror = failed })"
              ".then(() => navigator.serviceWorker.register('/worker.js'))"
              ".then(() => navigator.serviceWorker.ready)"
              ".then(() => kept = 'kept', e => kept = String(e)); 0"_s;
        const QString find = u"window.found = ''; Promise.all(["
                             "  indexedDB.databases().then(all => all.map(d => d.name).join()),"
                             "  navigator.serviceWorker.getRegistrations().then(all => all.length),"
                             "  fetch('/offline').then(r => r.text())])"
                             ".then(all => found = all.join('|'), e => found = String(e)); 0"_s;
        const auto run = [&](PageProfiles &profiles, const QString &script, const QString &result) {
            const auto profile = profiles.home();
            m_page->webView.startAfreshIn(profile->engineProfile());
            QVERIFY2(m_page->load(url), "no page");
            QVERIFY(waitForTitle(m_page->webView, u"keeper"_s));
            m_page->evaluate(script);
            TRY_VERIFY(!m_page->evaluate(result).toString().isEmpty());
            m_result = m_page->evaluate(result).toString();
            m_page->webView.startAfreshIn(m_page->profile.engineProfile());
            QVERIFY(m_page->loadPage("away"));
            m_page->page("<title>keeper</title>");
        };
        const auto start = [&] {
            return std::make_unique<PageProfiles>(m_page->folder.filePath(u"web2"_s),
                &m_page->cookies, &m_page->defaults, &m_page->mainQueue);
        };
        auto profiles = start();
        run(*profiles, keep, u"kept"_s);
        QCOMPARE(m_result, u"kept"_s);
        profiles = start();
        run(*profiles, find, u"found"_s);
        QCOMPARE(m_result, u"db|1|from the worker"_s);
        profiles->renew();
        run(*profiles, find, u"found"_s);
        QCOMPARE(m_result, u"|0|nothing here"_s);
    }

private:
    QString m_result;
};

VANT_WEB_TEST_MAIN(PageMannersTest)
#include "PageMannersTest.moc"
