#include "support/PageServer.h"
#include "support/Patience.h"
#include "upload/picker/ImagePickerController.h"
#include "web/HomeHarness.h"
#include "web/PageHarness.h"
#include "web/WebTestMain.h"
#include "web/home/STHomeViewController.h"
#include "web/secondary/SecondaryPages.h"

#include <QQuickItem>
#include <QQuickWebEngineProfile>
#include <QtQml/qqmlextensionplugin.h>

#include <csignal>

Q_IMPORT_QML_PLUGIN(Vant_UploadPlugin)

using namespace Qt::StringLiterals;

//! The home view under each thing that can cover it, in the window's own root view.
class CoveredViewTest : public QObject
{
    Q_OBJECT

private:
    using Act = std::function<void(CoveredViewTest &)>;

    std::unique_ptr<PageServer> m_server;
    std::unique_ptr<HomeHarness> m_harness;
    std::unique_ptr<SecondaryPages> m_pages;
    ViewController m_other;
    static constexpr const char *notYetShown = "not yet shown";

    Navigator *navigator() { return m_harness->stage.shell.navigator(); }
    STHomeViewController *home() { return &m_harness->controller; }

    // It may stand outside of the window; what holds it does not.
    QQuickItem *engineView(QQuickItem *below = nullptr)
    {
        QQuickItem *const from = below ? below : m_harness->window.contentItem();
        auto *held = from->property("item").value<QQuickItem *>();
        if (held && held->property("profile").value<QObject *>() == home()->webView()->profile())
            return held;
        for (QQuickItem *child : from->childItems()) {
            if (QQuickItem *found = engineView(child))
                return found;
        }
        return nullptr;
    }

    void showHome() { navigator()->setRootViewController(u"HomeScreen"_s, home()); }
    QString other() const { return m_server->url("/other.html"); }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<PageServer>();
        m_server->setPage("/portal.html",
            "<!doctype html><title>portal</title><input id=i autofocus><script>"
            "let frames = 0; requestAnimationFrame(function f() { ++frames; "
            "requestAnimationFrame(f) });"
            "</script>");
        m_server->setPage("/other.html", "<title>other</title>");
        m_harness = std::make_unique<HomeHarness>();
        m_harness->setPortal(m_server->url("/portal.html"));
        HomeStage &stage = m_harness->stage;
        m_pages = std::make_unique<SecondaryPages>(
            navigator(), &stage.portal.pageProfiles, &stage.portal.pageHost, &stage.mainQueue);
        navigator()->setAnimated(false);
        navigator()->registerScreen(
            u"HomeScreen"_s, QUrl(u"qrc:/qt/qml/Vant/Web/HomeScreen.qml"_s));
        navigator()->registerScreen(u"Other"_s, QUrl(u"qrc:/samples/SampleScreen.qml"_s));
        QQuickView &window = m_harness->window;
        window.setInitialProperties({{u"shell"_s, QVariant::fromValue(&stage.shell)}});
        window.setSource(QUrl(u"qrc:/qt/qml/Vant/Ui/RootView.qml"_s));
        window.show();
    }

    void cleanup()
    {
        m_harness->window.setSource({});
        m_pages.reset();
        m_harness.reset();
    }

    void aDeadProcessTakesNothingAlong_data()
    {
        QTest::addColumn<Act>("cover");
        QTest::addColumn<Act>("uncover");
        const auto row = [](
                             const char *name, const Act &cover,
                             const Act &uncover = [](CoveredViewTest &test) {
                                 test.navigator()->dismiss(test.navigator()->topViewController());
                             }) { QTest::newRow(name) << cover << uncover; };
        using Test = CoveredViewTest;
        row("nothing over it", {}, [](Test &) {});
        row("a page beside it",
            [](Test &test) { test.m_pages->jump2Outlink(test.other(), {}, {}); });
        row("a page on its side",
            [](Test &test) { test.m_pages->jump2OutlinkLandscape(test.other()); });
        row("a page under a bar",
            [](Test &test) { test.m_pages->openOutLinkPage(test.other(), {}); });
        row("the picker", [](Test &test) {
            ImagePickerController::present(&test.m_harness->stage.shell,
                &test.m_harness->stage.album, {}, {}, [](const auto &) {});
        });
        row(
            "another root",
            [](Test &test) { test.navigator()->setRootViewController(u"Other"_s, &test.m_other); },
            &Test::showHome);
        row(notYetShown, {}, &Test::showHome);
    }

    void aDeadProcessTakesNothingAlong()
    {
        QFETCH(const Act, cover);
        QFETCH(const Act, uncover);
        const bool isShown = QTest::currentDataTag() != QByteArray(notYetShown);
        if (isShown) {
            showHome();
        } else {
            navigator()->prepare(u"HomeScreen"_s, home());
            home()->webView()->load(QUrl(m_server->url("/portal.html")));
        }
        QVERIFY(waitForTitle(*home()->webView(), u"portal"_s));
        if (isShown)
            engineView()->setFocus(true);
        if (cover)
            cover(*this);
        const bool seen = isShown && !cover;
        TRY_COMPARE(engineView()->window() != nullptr, seen);
        QVERIFY(engineView()->isVisible());

        // What is not seen is not drawn either, and can be reached by nobody.
        if (!seen) {
            QVERIFY(!engineView()->hasActiveFocus());
            TRY_COMPARE(evaluateIn(*home()->webView(), u"document.visibilityState"_s).toString(),
                u"hidden"_s);
        }
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"the page's process has ended"_s));
        const auto loads = m_server->requestsFor("/portal.html").size();
        ::kill(pid_t(engineView()->property("renderProcessPid").toLongLong()), SIGKILL);
        TRY_COMPARE(m_server->requestsFor("/portal.html").size(), loads + 1);
        QVERIFY(waitForTitle(*home()->webView(), u"portal"_s));
        TRY_COMPARE(engineView()->window() != nullptr, seen);

        uncover(*this);
        TRY_VERIFY(engineView()->window() && engineView()->isVisible());
        // The first showing loads the portal.
        TRY_COMPARE(m_server->requestsFor("/portal.html").size(), loads + (isShown ? 1 : 2));
        QVERIFY(waitForTitle(*home()->webView(), u"portal"_s));
        TRY_COMPARE(engineView()->width(), 390);
        QCOMPARE(engineView()->hasFocus(), isShown);
        const auto drawn = [this] { return evaluateIn(*home()->webView(), u"frames"_s).toInt(); };
        const int before = drawn();
        QVERIFY(waitFor([&] { return drawn() > before + 3; }));
    }
};

VANT_WEB_TEST_MAIN(CoveredViewTest)
#include "CoveredViewTest.moc"
