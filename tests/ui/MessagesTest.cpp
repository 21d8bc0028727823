#include "support/ManualMainQueue.h"
#include "ui/ActionSheet.h"
#include "ui/AlertView.h"
#include "ui/ProgressHUD.h"
#include "ui/Shell.h"
#include "ui/Toast.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class MessagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toastGoesAfterTwoSeconds()
    {
        ManualMainQueue queue;
        Toast toast(queue);
        toast.showError(u"没有网络连接..."_s);
        QCOMPARE(toast.kind(), Toast::Kind::Error);
        queue.advance(1999ms);
        QVERIFY(toast.isVisible());
        queue.advance(1ms);
        QVERIFY(!toast.isVisible());
        toast.show(QString());
        QVERIFY(!toast.isVisible());
    }

    void newerToastTakesThePlaceOfTheOlderForItsOwnFullTime()
    {
        ManualMainQueue queue;
        Toast toast(queue);
        toast.show(u"保存失败"_s);
        queue.advance(1500ms);
        toast.showSuccess(u"保存成功"_s);
        queue.advance(1999ms);
        QVERIFY(toast.isVisible());
        QCOMPARE(toast.text(), u"保存成功"_s);
        queue.advance(1ms);
        QVERIFY(!toast.isVisible());
    }

    void alertsWaitForEachOtherAndAreAnsweredOnce()
    {
        AlertView view;
        QList<std::pair<QString, int>> answers;
        const auto ask = [&](const QString &title, const QStringList &buttons) {
            view.show({.title = title, .message = {}, .buttons = buttons}, [&, title](int index) {
                answers.append({title, index});
            });
        };
        ask(u"版本更新"_s, {u"取消"_s, u"确定"_s});
        ask(u"提醒"_s, {});
        QCOMPARE(view.title(), u"版本更新"_s);

        view.press(2);
        view.press(-1);
        QVERIFY(answers.isEmpty());
        view.press(1);
        QCOMPARE(view.title(), u"提醒"_s);
        QCOMPARE(view.buttons(), QStringList({u"确定"_s}));
        view.press(0);
        QVERIFY(!view.isVisible());
        view.press(0);
        QVERIFY(!view.cancel());
        const QList<std::pair<QString, int>> expected {{u"版本更新"_s, 1}, {u"提醒"_s, 0}};
        QCOMPARE(answers, expected);
    }

    void onlyCancellableAlertsAreCancelled_data()
    {
        QTest::addColumn<bool>("cancellable");
        QTest::addColumn<bool>("fullScreen");
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("forced") << false << false << false;
        QTest::newRow("cancellable") << true << false << true;
        QTest::newRow("full-screen notices always") << false << true << true;
    }

    void onlyCancellableAlertsAreCancelled()
    {
        QFETCH(bool, cancellable);
        QFETCH(bool, fullScreen);
        QFETCH(bool, cancelled);
        AlertView view;
        QList<int> answers;
        const auto style = fullScreen ? Alert::Style::FullScreen : Alert::Style::Dialog;
        view.show({.title = u"题"_s,
                      .message = {},
                      .buttons = {},
                      .tag = 101,
                      .cancellable = cancellable,
                      .style = style},
            [&](int index) { answers << index; });
        QCOMPARE(view.tag(), 101);
        QCOMPARE(view.cancel(), cancelled);
        QCOMPARE(view.isVisible(), !cancelled);
        QCOMPARE(answers, cancelled ? QList<int> {AlertView::cancelled} : QList<int>());
    }

    void anAnswerMayAskAgain()
    {
        AlertView view;
        view.show({.title = u"一"_s}, [&](int) { view.show({.title = u"二"_s}); });
        view.press(0);
        QCOMPARE(view.title(), u"二"_s);
        view.press(0);
        QVERIFY(!view.isVisible());
    }

    void actionSheetIsAnsweredOnceAndANewerOneCancelsTheOlder()
    {
        ActionSheet sheet;
        QList<int> first, second;
        sheet.show({}, {}, {u"保存图片"_s}, u"取消"_s, [&](int index) { first << index; });
        sheet.show({}, {}, {u"拍照"_s, u"相册"_s}, u"取消"_s, [&](int index) { second << index; });
        QCOMPARE(first, QList<int> {ActionSheet::cancelled});
        sheet.choose(2);
        QVERIFY(sheet.isVisible());
        sheet.choose(1);
        sheet.choose(1);
        QVERIFY(!sheet.cancel());
        QCOMPARE(first.size(), 1);
        QCOMPARE(second, QList<int> {1});
    }

    void progressIsCutToItsRange()
    {
        ProgressHUD hud;
        hud.showProgress(u"上传中"_s, 1.7);
        QCOMPARE(hud.progress(), 1.0);
        hud.showProgress(u"上传中"_s, -1);
        QCOMPARE(hud.progress(), 0.0);
        hud.show(u"登录中"_s);
        QVERIFY(!hud.isDeterminate());
        hud.hide();
        QVERIFY(!hud.isVisible());
    }

    void backAnswersWhatIsTopmost()
    {
        ManualMainQueue queue;
        Shell shell(queue);
        QVERIFY(!shell.back());
        QStringList answered;
        shell.alertView()->show(
            {.title = u"题"_s, .cancellable = true}, [&](int) { answered << u"alert"_s; });
        shell.actionSheet()->show(
            {}, {}, {u"甲"_s}, u"取消"_s, [&](int) { answered << u"sheet"_s; });
        shell.progressHUD()->show({});

        QVERIFY(shell.back());
        QVERIFY(answered.isEmpty());
        shell.progressHUD()->hide();
        QVERIFY(shell.back());
        QVERIFY(shell.back());
        QVERIFY(!shell.back());
        QCOMPARE(answered, QStringList({u"sheet"_s, u"alert"_s}));
    }
};

QTEST_GUILESS_MAIN(MessagesTest)
#include "MessagesTest.moc"
