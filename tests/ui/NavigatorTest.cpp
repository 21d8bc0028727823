#include "ui/NavigationController.h"
#include "ui/RecordingController.h"
#include "ui/UiHarness.h"

using namespace Qt::StringLiterals;

namespace {

const auto sample = u"Sample"_s;

QStringList taken(QStringList &log)
{
    return std::exchange(log, {});
}

QStringList shownAnew(const QString &name)
{
    return {name + u":willAppear"_s, name + u":didAppear"_s};
}

QStringList shownFirst(const QString &name)
{
    return QStringList {name + u":didLoad"_s} + shownAnew(name);
}

}

class NavigatorTest : public QObject
{
    Q_OBJECT

private:
    QStringList m_log;
    std::unique_ptr<RecordingController> m_home;
    std::unique_ptr<UiHarness> m_ui;
    Navigator *m_navigator = nullptr;

    QPointer<ViewController> present(const QString &name)
    {
        auto *page = new RecordingController(name, m_log);
        return m_navigator->present(sample, page) ? page : nullptr;
    }

private Q_SLOTS:
    void init()
    {
        m_ui.reset();
        m_log.clear();
        m_ui = std::make_unique<UiHarness>();
        m_home = std::make_unique<RecordingController>(u"home"_s, m_log);
        m_navigator = m_ui->shell.navigator();
        m_ui->showRootView();
        m_navigator->setRootViewController(sample, m_home.get());
        QCOMPARE(taken(m_log), shownFirst(u"home"_s));
    }

    void keepsTheViewOfARootAcrossSwitches()
    {
        const QPointer<QQuickItem> made = m_ui->itemWithText(u"按 home"_s);
        RecordingController login(u"login"_s, m_log);
        m_navigator->setRootViewController(sample, &login);
        QVERIFY(made && !made->isVisible());
        QVERIFY(m_ui->itemWithText(u"按 login"_s));
        m_navigator->setRootViewController({});
        QVERIFY(!m_ui->itemWithText(u"按 login"_s));
        m_log.clear();

        m_navigator->setRootViewController(sample, m_home.get());
        m_navigator->setRootViewController(sample, m_home.get());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(made && made->isVisible());
        QCOMPARE(taken(m_log), shownAnew(u"home"_s));
    }

    void tellsControllersOfTheirAppearances()
    {
        const auto page = present(u"page"_s);
        QVERIFY(!m_navigator->present(sample, page));
        QCOMPARE(m_log, shownFirst(u"page"_s).mid(0, 2));
        TRY_COMPARE(m_log, shownFirst(u"page"_s));
        // Neither eye nor screen reader shall find what is covered.
        QVERIFY(!m_ui->itemWithText(u"按 home"_s));
        m_log.clear();

        m_navigator->dismiss(page);
        QCOMPARE(m_log.value(0), u"home:willAppear"_s);
        QVERIFY(m_ui->itemWithText(u"按 home"_s));
        TRY_COMPARE(m_log, shownAnew(u"home"_s));
        TRY_VERIFY(!page && !m_ui->itemWithText(u"按 page"_s));
    }

    void modalsGoWithTheOneBelowThemOrTheRoot()
    {
        const auto lower = present(u"lower"_s);
        const auto upper = present(u"upper"_s);
        TRY_VERIFY(m_log.contains(u"upper:didAppear"_s));
        m_log.clear();
        m_navigator->dismiss(lower);
        TRY_VERIFY(!lower && !upper);
        QCOMPARE(taken(m_log), shownAnew(u"home"_s));

        const auto page = present(u"page"_s);
        RecordingController login(u"login"_s, m_log);
        m_navigator->setRootViewController(sample, &login);
        TRY_VERIFY(!page);
        QVERIFY(!m_log.contains(u"home:willAppear"_s));
    }

    void screensGoWithTheirControllers()
    {
        const auto page = present(u"page"_s);
        delete page;
        QCOMPARE(m_navigator->topViewController(), m_home.get());
        m_home.reset();
        QCOMPARE(m_navigator->rootViewController(), nullptr);
        QCOMPARE(m_navigator->screens()->rowCount(), 0);
    }

    void backKeyIsTheScreensFirstAndThenTheNavigators()
    {
        const auto page = present(u"page"_s);
        TRY_VERIFY(m_log.contains(u"page:didAppear"_s));
        static_cast<RecordingController *>(page.get())->usesBack = true;
        QTest::keyClick(&m_ui->view, Qt::Key_Escape);
        QCOMPARE(m_navigator->topViewController(), page);
        static_cast<RecordingController *>(page.get())->usesBack = false;
        QTest::keyClick(&m_ui->view, Qt::Key_Escape);
        TRY_VERIFY(!page);
        m_log.clear();
        QTest::keyClick(&m_ui->view, Qt::Key_Escape);
        QCOMPARE(taken(m_log), QStringList {u"home:back"_s});
        QCOMPARE(m_navigator->topViewController(), m_home.get());
    }

    void aNavigationControllerPopsToItsFirstScreenAndEndsWithIt()
    {
        auto *choose = new RecordingController(u"choose"_s, m_log);
        const QPointer<NavigationController> frame
            = new NavigationController(m_navigator, sample, choose);
        choose->setParent(frame);
        m_navigator->present(QString::fromLatin1(NavigationController::screenName), frame);
        TRY_COMPARE(m_log, shownFirst(u"choose"_s));
        m_log.clear();

        const QPointer<ViewController> detail = new RecordingController(u"detail"_s, m_log);
        frame->push(sample, detail);
        TRY_COMPARE(m_log, shownFirst(u"detail"_s));
        m_log.clear();
        QVERIFY(m_ui->itemWithText(u"detail"_s) && !m_ui->itemWithText(u"按 choose"_s));
        m_ui->click(m_ui->itemWithText(u"返回"_s));
        TRY_VERIFY(!detail);
        QCOMPARE(taken(m_log), shownAnew(u"choose"_s));

        const QPointer<ViewController> first = new RecordingController(u"first"_s, m_log);
        const QPointer<ViewController> second = new RecordingController(u"second"_s, m_log);
        frame->push(sample, first);
        frame->push(sample, second);
        QCOMPARE(second->navigationController(), frame);
        TRY_VERIFY(m_log.contains(u"second:didAppear"_s));
        m_log.clear();
        frame->popToRoot();
        TRY_VERIFY(!first && !second);
        QCOMPARE(taken(m_log), shownAnew(u"choose"_s));
        m_ui->click(m_ui->itemWithText(u"返回"_s));
        TRY_VERIFY(!frame);
    }
};

QTEST_MAIN(NavigatorTest)
#include "NavigatorTest.moc"
