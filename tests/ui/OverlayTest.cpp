#include "ui/RecordingController.h"
#include "ui/UiHarness.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class OverlayTest : public QObject
{
    Q_OBJECT

private:
    //! How often the sample screen's button was pressed.
    static int clicks(const UiHarness &ui)
    {
        return ui.itemNamed(u"screen home"_s)->property("clicks").toInt();
    }

private Q_SLOTS:
    void inputReachesTheScreenOnlyWhenNothingBlocksIt_data()
    {
        QTest::addColumn<QString>("overlay");
        QTest::addColumn<bool>("reaches");
        QTest::newRow("nothing") << u""_s << true;
        QTest::newRow("toast") << u"toast"_s << true;
        QTest::newRow("indicator") << u"hud"_s << false;
        QTest::newRow("alert") << u"alert"_s << false;
        QTest::newRow("notice") << u"notice"_s << false;
        QTest::newRow("sheet") << u"sheet"_s << false;
    }

    void inputReachesTheScreenOnlyWhenNothingBlocksIt()
    {
        QFETCH(QString, overlay);
        QFETCH(bool, reaches);
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        Shell &shell = ui.shell;
        shell.navigator()->setRootViewController(u"Sample"_s, &home);
        const auto *button = ui.itemWithText(u"按 home"_s);
        if (overlay == u"toast")
            shell.toast()->show(u"请稍后"_s);
        else if (overlay == u"hud")
            shell.progressHUD()->show(u"登录中"_s);
        else if (overlay == u"alert")
            shell.alertView()->show({.title = u"提醒"_s, .message = u"收到一条消息"_s});
        else if (overlay == u"notice")
            shell.alertView()->show({.title = u"忘记密码"_s,
                .message = u"请联系老师"_s,
                .style = Alert::Style::FullScreen});
        else if (overlay == u"sheet")
            shell.actionSheet()->show({}, {}, {u"保存图片"_s}, u"取消"_s, {});

        // However often the keyboard moves on.
        bool focused = false;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(&ui.view, Qt::Key_Tab);
            focused = focused || button->hasActiveFocus();
        }
        QCOMPARE(focused, reaches);
        ui.click(button);
        QCOMPARE(clicks(ui), reaches ? 1 : 0);
    }

    void toastIsGoneFromTheScreenAfterItsTime()
    {
        UiHarness ui;
        ui.showRootView();
        ui.shell.toast()->show(u"保存成功"_s);
        QTRY_VERIFY(ui.itemWithText(u"保存成功"_s));
        ui.queue.advance(2000ms);
        QTRY_VERIFY(!ui.itemWithText(u"保存成功"_s));
    }

    void alertIsAnsweredByTouchAndByKey_data()
    {
        QTest::addColumn<QString>("touch");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("answer");
        QTest::newRow("first button") << u"取消"_s << 0 << 0;
        QTest::newRow("last button") << u"确定"_s << 0 << 1;
        QTest::newRow("return key on the last") << QString() << int(Qt::Key_Return) << 1;
        QTest::newRow("space key on the last") << QString() << int(Qt::Key_Space) << 1;
        QTest::newRow("escape") << QString() << int(Qt::Key_Escape) << AlertView::cancelled;
    }

    void alertIsAnsweredByTouchAndByKey()
    {
        QFETCH(QString, touch);
        QFETCH(int, key);
        QFETCH(int, answer);
        UiHarness ui;
        ui.showRootView();
        QList<int> answers;
        ui.shell.alertView()->show({.title = u"提醒"_s,
                                       .message = u"是否查看"_s,
                                       .buttons = {u"取消"_s, u"确定"_s},
                                       .cancellable = true},
            [&](int index) { answers << index; });
        if (key)
            QTest::keyClick(&ui.view, Qt::Key(key));
        else
            ui.click(ui.itemWithText(touch));
        QCOMPARE(answers, QList<int> {answer});
        QVERIFY(!ui.itemWithText(u"提醒"_s));
    }

    void sheetIsAnsweredByTouch_data()
    {
        QTest::addColumn<QString>("touch");
        QTest::addColumn<int>("answer");
        QTest::newRow("action") << u"相册"_s << 1;
        QTest::newRow("cancel") << u"取消"_s << ActionSheet::cancelled;
    }

    void sheetIsAnsweredByTouch()
    {
        QFETCH(QString, touch);
        QFETCH(int, answer);
        UiHarness ui;
        ui.showRootView();
        QList<int> answers;
        ui.shell.actionSheet()->show(
            {}, {}, {u"拍照"_s, u"相册"_s}, u"取消"_s, [&](int index) { answers << index; });
        ui.click(ui.itemWithText(touch));
        QCOMPARE(answers, QList<int> {answer});
    }

    void touchOutsideCancelsWhatMayBeCancelled_data()
    {
        QTest::addColumn<bool>("cancellable");
        QTest::newRow("cancellable") << true;
        QTest::newRow("forced") << false;
    }

    void touchOutsideCancelsWhatMayBeCancelled()
    {
        QFETCH(bool, cancellable);
        UiHarness ui;
        ui.showRootView();
        ui.shell.alertView()->show({.title = u"提醒"_s, .cancellable = cancellable});
        QTest::mouseClick(&ui.view, Qt::LeftButton, {}, {20, 20});
        QCOMPARE(ui.shell.alertView()->isVisible(), !cancellable);
        ui.shell.actionSheet()->show({}, {}, {u"拍照"_s}, u"取消"_s, {});
        QTest::mouseClick(&ui.view, Qt::LeftButton, {}, {20, 20});
        QVERIFY(!ui.shell.actionSheet()->isVisible());
    }

    void keyboardReturnsToTheScreenAfterAnAlert()
    {
        QStringList log;
        RecordingController home(u"home"_s, log);
        UiHarness ui;
        ui.showRootView();
        ui.shell.navigator()->setRootViewController(u"Sample"_s, &home);
        QTest::keyClick(&ui.view, Qt::Key_Tab);
        const auto *button = ui.itemWithText(u"按 home"_s);
        QVERIFY(button->hasActiveFocus());
        ui.shell.alertView()->show({.title = u"提醒"_s});
        QVERIFY(!button->hasActiveFocus());
        QTest::keyClick(&ui.view, Qt::Key_Return);
        QVERIFY(button->hasActiveFocus());
    }
};

QTEST_MAIN(OverlayTest)
#include "OverlayTest.moc"
