#include "support/Patience.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/engine/PageErrors.h"

#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

//! The ways through pages by keys and mouse buttons.
class PageTravelTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PageHarness> m_page;

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&m_page->window, key, modifiers);
    }
    //! The page has seen all keys before this.
    QString heard() { return m_page->evaluate(u"heard.join()"_s).toString(); }

private Q_SLOTS:
    void init()
    {
        m_page = std::make_unique<PageHarness>();
        m_page->window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&m_page->window, patienceMs));
    }
    void cleanup() { m_page.reset(); }

    void goesThroughTheHistory()
    {
        m_page->page("<title>second</title>x", "/second.html");
        const QString first = m_page->page("<title>first</title>x", "/first.html");
        QVERIFY(m_page->load(first));
        QVERIFY(!m_page->webView.back());
        // Pages that a user has not touched are passed over on the way back.
        TRY_VERIFY((QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {50, 50}),
            m_page->evaluate(u"navigator.userActivation.hasBeenActive"_s).toBool()));
        m_page->evaluate(u"location.href = '/second.html'; 0"_s);
        QVERIFY(waitForTitle(m_page->webView, u"second"_s));
        QVERIFY(m_page->webView.back());
        QVERIFY(waitForTitle(m_page->webView, u"first"_s));
        press(Qt::Key_Right, Qt::AltModifier);
        QVERIFY(waitForTitle(m_page->webView, u"second"_s));
        QVERIFY(m_page->webView.back());
        QVERIFY(waitForTitle(m_page->webView, u"first"_s));
        QTest::mouseClick(&m_page->window, Qt::ForwardButton, {}, {50, 50});
        QVERIFY(waitForTitle(m_page->webView, u"second"_s));
    }

    void loadsAnew()
    {
        PageErrors errors(&m_page->webView, &m_page->pageHost);
        QVERIFY(m_page->loadPage("<title>page</title>x"));
        int asked = m_page->server.requestsFor("/page.html").size();
        for (const auto &[key, modifiers] :
            {std::pair {Qt::Key_F5, Qt::NoModifier}, {Qt::Key_R, Qt::ControlModifier}}) {
            QSignalSpy finished(&m_page->webView, &WebView::didFinishNavigation);
            press(key, modifiers);
            QVERIFY(finished.wait(patienceMs));
            QCOMPARE(m_page->server.requestsFor("/page.html").size(), ++asked);
        }
        int retries = 0;
        connect(errors.state(), &ErrorViewState::retry, this, [&retries] { ++retries; });
        errors.showNoAddress();
        press(Qt::Key_F5);
        QCOMPARE(retries, 1);
    }

    void findsTextsAndLeavesByEscape()
    {
        QVERIFY(m_page->loadPage("<title>page</title><p>one two one</p><input id=i autofocus>"
                                 "<script>const heard = [];"
                                 "addEventListener('keydown', event => heard.push(event.key))"
                                 "</script>"));
        QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {50, 50});
        PageTravel *travel = m_page->webView.travel();
        QSignalSpy steps(&m_page->webView, &WebView::historyStepRequested);
        press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(travel->isFinding());
        for (const Qt::Key key : {Qt::Key_O, Qt::Key_N, Qt::Key_E})
            press(key);
        const auto *bar = m_page->window.rootObject()->findChild<QQuickItem *>(u"findBar"_s);
        QVERIFY(bar);
        TRY_COMPARE(bar->property("count").toInt(), 2);
        TRY_COMPARE(bar->property("current").toInt(), 1);
        press(Qt::Key_Return);
        TRY_COMPARE(bar->property("current").toInt(), 2);
        QVERIFY(m_page->webView.back());
        QVERIFY(!travel->isFinding() && steps.isEmpty());
        // The page has the keys again, and what it leaves of them closes the bar.
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::mouseClick(&m_page->window, Qt::LeftButton, {}, {50, 300});
        QVERIFY(travel->isFinding());
        TRY_VERIFY((press(Qt::Key_Escape), !travel->isFinding()));
        // It was the page's first, and is never history.
        QVERIFY(heard().contains(u"Escape"_s));
        QVERIFY(steps.isEmpty());
    }
};

VANT_WEB_TEST_MAIN(PageTravelTest)
#include "PageTravelTest.moc"
