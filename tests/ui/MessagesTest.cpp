#include "ui/RecordingController.h"
#include "ui/UiHarness.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

//! Toast, indicator, alerts and sheets: their order, their answers, and what they keep from the
//! screen.
class MessagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newerToastTakesThePlaceOfTheOlderForItsOwnFullTime()
    {
        ManualMainQueue queue;
        Toast toast(queue);
        toast.show(u"保存失败"_s);
        queue.advance(1500ms);
        toast.showSuccess(u"保存成功"_s);
        queue.advance(1999ms);
        QVERIFY(toast.isVisible() && toast.text() == u"保存成功");
        queue.advance(1ms);
        QVERIFY(!toast.isVisible());
        toast.show(QString());
        QVERIFY(!toast.isVisible());
    }

    void loadingToastsStayUnderThoseThatGoByThemselves()
    {
        ManualMainQueue queue;
        Toast toast(queue);
        const quint64 list = toast.showLoading(u"请稍后"_s);
        const quint64 upload = toast.showLoading(u"上传中..."_s);
        toast.showSuccess(u"保存成功"_s);
        toast.showProgress(upload, 0.5);
        QCOMPARE(toast.text(), u"保存成功"_s);
        queue.advance(2000ms);
        QCOMPARE(toast.text(), u"上传中..."_s);
        QCOMPARE(toast.progress(), 0.5);
        toast.hideLoading(upload);
        QCOMPARE(toast.text(), u"请稍后"_s);
        toast.hideLoading(list);
        QVERIFY(!toast.isVisible());
    }

    void alertsWaitForEachOtherAndAreAnsweredOnce()
    {
        AlertView view;
        QStringList answers;
        const auto ask = [&](const QString &title, const QStringList &buttons, bool cancellable) {
            view.show({.title = title, .buttons = buttons, .cancellable = cancellable},
                [&, title](int index) { answers << title + QString::number(index); });
        };
        ask(u"版本更新"_s, {u"取消"_s, u"确定"_s}, false);
        ask(u"提醒"_s, {}, true);
        view.press(2);
        view.press(-1);
        QVERIFY2(!view.cancel() && answers.isEmpty(), "a forced alert wants one of its buttons");
        view.press(1);
        QCOMPARE(view.buttons(), QStringList {u"确定"_s});
        QVERIFY(view.cancel());
        view.press(0);
        QVERIFY(!view.cancel() && !view.isVisible());
        QCOMPARE(answers, (QStringList {u"版本更新1"_s, u"提醒-1"_s}));
    }

    void backAnswersWhatIsTopmost()
    {
        ManualMainQueue queue;
        Shell shell(queue);
        QStringList answered;
        const auto note = [&](const QString &name) {
            return [&answered, name](int index) { answered << name + QString::number(index); };
        };
        shell.alertView()->show({.title = u"题"_s, .cancellable = true}, note(u"alert"_s));
        shell.actionSheet()->show({}, {}, {u"甲"_s}, {}, note(u"older sheet"_s));
        shell.actionSheet()->show({}, {}, {u"甲"_s}, {}, note(u"sheet"_s));
        shell.progressHUD()->show({});
        QVERIFY(shell.back());
        QCOMPARE(answered, QStringList {u"older sheet-1"_s});
        shell.progressHUD()->hide();
        QVERIFY(shell.back() && shell.back());
        QVERIFY(!shell.back());
        shell.actionSheet()->choose(0);
        QCOMPARE(answered, (QStringList {u"older sheet-1"_s, u"sheet-1"_s, u"alert-1"_s}));
    }

    void inputReachesTheScreenOnlyWhenNothingBlocksIt_data()
    {
        QTest::addColumn<std::function<void(Shell &)>>("cover");
        QTest::addColumn<bool>("reaches");
        const auto row = [](const char *name, std::function<void(Shell &)> cover, bool reaches) {
            QTest::newRow(name) << cover << reaches;
        };
        row(
            "toast", [](Shell &shell) { shell.toast()->show(u"请稍后"_s); }, true);
        row(
            "indicator", [](Shell &shell) { shell.progressHUD()->show(u"登录中"_s); }, false);
        row(
            "alert", [](Shell &shell) { shell.alertView()->show({.title = u"提醒"_s}); }, false);
        row(
            "notice",
            [](Shell &shell) {
                shell.alertView()->show(
                    {.title = u"忘记密码"_s, .style = Alert::Style::FullScreen});
            },
            false);
        row(
            "sheet",
            [](Shell &shell) { shell.actionSheet()->show({}, {}, {u"甲"_s}, u"取消"_s, {}); },
            false);
    }

    void inputReachesTheScreenOnlyWhenNothingBlocksIt()
    {
        QFETCH(const std::function<void(Shell &)>, cover);
        QFETCH(const bool, reaches);
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        ui.shell.navigator()->setRootViewController(u"Sample"_s, &home);
        const auto *button = ui.itemWithText(u"按 home"_s);
        cover(ui.shell);
        // However often the keyboard moves on.
        bool focused = false;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(&ui.view, Qt::Key_Tab);
            focused = focused || button->hasActiveFocus();
        }
        QCOMPARE(focused, reaches);
        ui.click(button);
        QCOMPARE(button->property("clicks"), QVariant(reaches ? 1 : 0));
    }

    void alertIsAnsweredByTouchAndByKey_data()
    {
        QTest::addColumn<QString>("touch"); // null: the key
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("answer");
        QTest::newRow("first button") << u"取消"_s << Qt::Key() << 0;
        QTest::newRow("return key: the last") << QString() << Qt::Key_Return << 1;
        QTest::newRow("escape") << QString() << Qt::Key_Escape << AlertView::cancelled;
    }

    // The keyboard is the screen's again afterwards.
    void alertIsAnsweredByTouchAndByKey()
    {
        QFETCH(const QString, touch);
        QFETCH(const Qt::Key, key);
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        ui.shell.navigator()->setRootViewController(u"Sample"_s, &home);
        QTest::keyClick(&ui.view, Qt::Key_Tab);
        const auto *button = ui.itemWithText(u"按 home"_s);
        int answer = -2;
        ui.shell.alertView()->show(
            {.title = u"提醒"_s, .buttons = {u"取消"_s, u"确定"_s}, .cancellable = true},
            [&](int index) { answer = index; });
        QVERIFY(!button->hasActiveFocus());
        if (touch.isNull())
            QTest::keyClick(&ui.view, key);
        else
            ui.click(ui.itemWithText(touch));
        QTEST(answer, "answer");
        QVERIFY(button->hasActiveFocus());
    }

    void touchOutsideCancelsWhatMayBeCancelled()
    {
        UiHarness ui;
        ui.showRootView();
        for (const bool cancellable : {true, false}) {
            ui.shell.alertView()->show({.title = u"提醒"_s, .cancellable = cancellable});
            QTest::mouseClick(&ui.view, Qt::LeftButton, {}, {20, 20});
            QCOMPARE(ui.shell.alertView()->isVisible(), !cancellable);
        }
    }
};

QTEST_MAIN(MessagesTest)
#include "MessagesTest.moc"
