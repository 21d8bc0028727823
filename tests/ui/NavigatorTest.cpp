#include "ui/NavigationController.h"
#include "ui/RecordingController.h"
#include "ui/UiHarness.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto sample = u"Sample"_s;

QStringList taken(QStringList &log)
{
    return std::exchange(log, {});
}

} // namespace

class NavigatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheViewOfARootAcrossSwitches()
    {
        QStringList log;
        RecordingController home(u"home"_s, log), login(u"login"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        QSignalSpy rootChanged(&navigator, &Navigator::rootChanged);

        navigator.setRootViewController(sample, &home);
        QCOMPARE(taken(log),
            QStringList({u"home:didLoad"_s, u"home:willAppear"_s, u"home:didAppear"_s}));
        const QPointer<QQuickItem> made = ui.itemNamed(u"screen home"_s);
        QVERIFY(made && made->isVisible());
        navigator.setRootViewController(sample, &home);
        QCOMPARE(rootChanged.size(), 1);

        navigator.setRootViewController(sample, &login);
        QVERIFY(made && !made->isVisible());
        QVERIFY(ui.itemWithText(u"按 login"_s));
        navigator.setRootViewController({});
        QCOMPARE(navigator.rootName(), QString());
        QVERIFY(!ui.itemWithText(u"按 login"_s));
        log.clear();

        navigator.setRootViewController(sample, &home);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(made && made->isVisible());
        QCOMPARE(taken(log), QStringList({u"home:willAppear"_s, u"home:didAppear"_s}));
        QCOMPARE(rootChanged.size(), 4);
    }

    void preparedRootIsBuiltButNeitherSeenNorTold()
    {
        QStringList log;
        RecordingController home(u"home"_s, log), login(u"login"_s, log);
        UiHarness ui;
        ui.showRootView();
        ui.shell.navigator()->setRootViewController(sample, &login);
        log.clear();

        ui.shell.navigator()->prepare(sample, &home);
        const auto *made = ui.itemNamed(u"screen home"_s);
        QVERIFY(made && !made->isVisible());
        QCOMPARE(log, QStringList());

        ui.shell.navigator()->setRootViewController(sample, &home);
        QVERIFY(made->isVisible());
        QCOMPARE(ui.itemNamed(u"screen home"_s), made);
    }

    void tellsControllersOfTheirAppearances_data()
    {
        QTest::addColumn<bool>("animated");
        QTest::newRow("at once") << false;
        QTest::newRow("animated") << true;
    }

    void tellsControllersOfTheirAppearances()
    {
        QFETCH(bool, animated);
        QStringList log;
        RecordingController home(u"home"_s, log), page(u"page"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setAnimated(animated);
        navigator.setRootViewController(sample, &home);
        QObject owner;
        page.setParent(&owner);
        log.clear();

        QVERIFY(navigator.present(sample, &page));
        QVERIFY(!navigator.present(sample, &page));
        if (animated)
            QCOMPARE(log, QStringList({u"page:didLoad"_s, u"page:willAppear"_s}));
        QTRY_COMPARE(log.size(), 3);
        QCOMPARE(taken(log),
            QStringList({u"page:didLoad"_s, u"page:willAppear"_s, u"page:didAppear"_s}));
        // Neither eye nor screen reader shall find what is covered.
        QVERIFY(!ui.itemWithText(u"按 home"_s));
        QCOMPARE(navigator.topViewController(), &page);

        QSignalSpy dismissed(&navigator, &Navigator::dismissed);
        navigator.dismiss(&page);
        QCOMPARE(log.value(0), u"home:willAppear"_s);
        QVERIFY(ui.itemWithText(u"按 home"_s));
        QTRY_COMPARE(log.size(), 2);
        QCOMPARE(taken(log), QStringList({u"home:willAppear"_s, u"home:didAppear"_s}));
        QCOMPARE(dismissed.size(), 1);
        QVERIFY(!ui.itemWithText(u"按 page"_s));
        page.setParent(nullptr);
    }

    void dismissingALowerModalClosesThoseAboveIt()
    {
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setRootViewController(sample, &home);
        const QPointer<ViewController> lower = new RecordingController(u"lower"_s, log);
        const QPointer<ViewController> upper = new RecordingController(u"upper"_s, log);
        navigator.present(sample, lower);
        navigator.present(sample, upper);
        QTRY_VERIFY(log.contains(u"upper:didAppear"_s));
        log.clear();

        navigator.dismiss(lower);
        QTRY_VERIFY(!lower && !upper);
        QCOMPARE(log, QStringList({u"home:willAppear"_s, u"home:didAppear"_s}));
        QCOMPARE(navigator.topViewController(), &home);
    }

    void switchingTheRootDropsAllModals()
    {
        QStringList log;
        RecordingController home(u"home"_s, log), login(u"login"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setRootViewController(sample, &home);
        const QPointer<ViewController> page = new RecordingController(u"page"_s, log);
        navigator.present(sample, page);
        log.clear();

        navigator.setRootViewController(sample, &login);
        QVERIFY(!log.contains(u"home:willAppear"_s));
        QVERIFY(ui.itemWithText(u"按 login"_s));
        QVERIFY(!ui.itemWithText(u"按 page"_s));
        QTRY_VERIFY(!page);
    }

    void screensGoWithTheirControllers()
    {
        QStringList log;
        auto home = std::make_unique<RecordingController>(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setRootViewController(sample, home.get());
        auto page = std::make_unique<RecordingController>(u"page"_s, log);
        navigator.present(sample, page.get());

        page.reset();
        QCOMPARE(navigator.topViewController(), home.get());
        home.reset();
        QCOMPARE(navigator.rootViewController(), nullptr);
        QCOMPARE(navigator.screens()->rowCount(), 0);
    }

    void refusesUnknownNames()
    {
        QStringList log;
        RecordingController page(u"page"_s, log);
        Navigator navigator;
        QTest::ignoreMessage(QtWarningMsg, "no screen is registered under the name \"Nowhere\"");
        QVERIFY(!navigator.present(u"Nowhere"_s, &page));
        QCOMPARE(navigator.topViewController(), nullptr);
    }

    void recordsScreensWithoutAWindow()
    {
        QStringList log;
        RecordingController home(u"home"_s, log);
        Navigator navigator;
        navigator.registerScreen(sample, QUrl(u"qrc:/none.qml"_s));
        navigator.setRootViewController(sample, &home);
        QSignalSpy presented(&navigator, &Navigator::presented);
        const QPointer<ViewController> page = new RecordingController(u"page"_s, log);
        navigator.present(sample, page);
        QCOMPARE(presented, QList<QVariantList>({{sample}}));
        QCOMPARE(navigator.topViewController(), page);
        navigator.dismiss(page);
        QTRY_VERIFY(!page);
        QCOMPARE(log, QStringList());
    }

    void backKeyIsTheScreensFirstAndThenTheNavigators()
    {
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setAnimated(false);
        navigator.setRootViewController(sample, &home);
        auto *page = new RecordingController(u"page"_s, log);
        navigator.present(sample, page);
        const QPointer<ViewController> guard = page;

        page->usesBack = true;
        QTest::keyClick(&ui.view, Qt::Key_Escape);
        QCOMPARE(navigator.topViewController(), page);
        page->usesBack = false;
        QTest::keyClick(&ui.view, Qt::Key_Escape);
        QTRY_VERIFY(!guard);
        log.clear();
        QTest::keyClick(&ui.view, Qt::Key_Escape);
        QCOMPARE(log, QStringList({u"home:back"_s}));
        QCOMPARE(navigator.topViewController(), &home);
    }

    void navigationControllerPushesAndPops()
    {
        QStringList log;
        RecordingController login(u"login"_s, log);
        login.hidesBar = true;
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        NavigationController navigation(&navigator, sample, &login);
        navigator.setRootViewController(NavigationController::screenName, &navigation);
        QCOMPARE(taken(log),
            QStringList({u"login:didLoad"_s, u"login:willAppear"_s, u"login:didAppear"_s}));
        QVERIFY(!ui.itemWithText(u"返回"_s));

        const QPointer<ViewController> detail = new RecordingController(u"detail"_s, log);
        navigation.push(sample, detail);
        QTRY_COMPARE(log.size(), 3);
        QCOMPARE(taken(log),
            QStringList({u"detail:didLoad"_s, u"detail:willAppear"_s, u"detail:didAppear"_s}));
        QVERIFY(ui.itemWithText(u"detail"_s));
        QVERIFY(!ui.itemWithText(u"按 login"_s));

        ui.click(ui.itemWithText(u"返回"_s));
        QTRY_VERIFY(!detail);
        QCOMPARE(taken(log), QStringList({u"login:willAppear"_s, u"login:didAppear"_s}));
        QVERIFY(navigation.navigationBarHidden());
        navigation.pop();
        QCOMPARE(navigation.topViewController(), &login);
    }

    void presentedNavigationControllerEndsWithItsFirstScreen()
    {
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        Navigator &navigator = *ui.shell.navigator();
        navigator.setRootViewController(sample, &home);
        for (const bool byButton : {true, false}) {
            auto *choose = new RecordingController(u"choose"_s, log);
            const QPointer<NavigationController> navigation
                = new NavigationController(&navigator, sample, choose);
            choose->setParent(navigation);
            log.clear();
            navigator.present(NavigationController::screenName, navigation);
            QTRY_COMPARE(log.size(), 3);
            QCOMPARE(log,
                QStringList({u"choose:didLoad"_s, u"choose:willAppear"_s, u"choose:didAppear"_s}));
            if (byButton)
                ui.click(ui.itemWithText(u"返回"_s));
            else
                navigator.dismiss(choose);
            QTRY_VERIFY(!navigation);
        }
    }
};

QTEST_MAIN(NavigatorTest)
#include "NavigatorTest.moc"
