#include "support/Table.h"
#include "ui/UiHarness.h"
#include "ui/navigation/NavigationController.h"

using namespace Qt::StringLiterals;

//! Screens, alerts and sheets: who stands above whom, who is told, and who gets the input.
class ShellTest : public QObject
{
    Q_OBJECT

private:
    using Covers = Table<std::function<void(Shell &)>, bool>;

    std::unique_ptr<ViewController> m_home;
    std::unique_ptr<UiHarness> m_ui;

private Q_SLOTS:
    void init()
    {
        m_ui.reset();
        m_ui = std::make_unique<UiHarness>();
        m_home = std::make_unique<ViewController>();
        m_home->setTitle(u"home"_s);
        m_ui->showRootView();
        m_ui->shell.navigator()->setRootViewController(u"Sample"_s, m_home.get());
    }

    void screensGoWithTheirControllers()
    {
        Navigator *navigator = m_ui->shell.navigator();
        auto page = std::make_unique<ViewController>();
        QVERIFY(navigator->present(u"Sample"_s, page.get()));
        page.reset();
        QCOMPARE(navigator->topViewController(), m_home.get());
        m_home.reset();
        QCOMPARE(navigator->rootViewController(), nullptr);
        QCOMPARE(navigator->screens()->rowCount(), 0);
    }

    void screensThatNobodyOwnsGoWithTheNavigator()
    {
        ViewController own;
        QPointer<ViewController> page = new ViewController;
        QPointer<ViewController> picker = new ViewController;
        QPointer<NavigationController> frame;
        {
            Navigator navigator;
            navigator.registerScreen(u"Sample"_s, QUrl(u"qrc:/samples/SampleScreen.qml"_s));
            frame = new NavigationController(&navigator, u"Sample"_s, &own);
            frame->push(u"Sample"_s, page);
            QVERIFY(
                navigator.present(QString::fromLatin1(NavigationController::screenName), frame));
            QVERIFY(navigator.present(u"Sample"_s, picker));
        }
        QVERIFY(!frame && !page && !picker);
    }

    void alertsWaitForEachOtherAndAreAnsweredOnce()
    {
        AlertView view;
        QStringList answers;
        const auto ask = [&](const QString &title, const QStringList &buttons) {
            return view.show({.title = title, .buttons = buttons},
                [&, title](int index) { answers << title + QString::number(index); });
        };
        ask(u"版本更新"_s, {u"取消"_s, u"确定"_s});
        const int waiting = ask(u"等待"_s, {});
        const int next = ask(u"提醒"_s, {});
        view.press(2);
        view.press(-1);
        QCOMPARE(answers, QStringList());
        view.withdraw(waiting);
        view.withdraw(waiting);
        QCOMPARE(view.title(), u"版本更新"_s);
        view.press(1);
        QCOMPARE(view.buttons(), QStringList {u"确定"_s});
        view.withdraw(next);
        QVERIFY(!view.isVisible());
        view.press(0);
        QCOMPARE(answers, (QStringList {u"等待-1"_s, u"版本更新1"_s, u"提醒-1"_s}));
    }

    void theBackKeyAnswersAnAlertAndATouchBesideItNever()
    {
        AlertView *alert = m_ui->shell.alertView();
        QList<int> answers;
        for (const auto &backButton : {std::optional<int>(), std::optional(0), std::optional(1)})
            alert->show({.buttons = {u"取消"_s, u"确定"_s}, .backButton = backButton},
                [&answers](int index) { answers << index; });
        const auto touch = [this] { QTest::mouseClick(&m_ui->view, Qt::LeftButton, {}, {5, 5}); };
        const auto goBack = [this] { QTest::keyClick(&m_ui->view, Qt::Key_Escape); };
        touch();
        goBack();
        QCOMPARE(answers, QList<int>());
        alert->press(1);
        touch();
        QCOMPARE(answers, QList {1});
        goBack();
        goBack();
        QCOMPARE(answers, (QList {1, 0, 1}));
    }

    void backAnswersWhatIsTopmost()
    {
        Shell &shell = m_ui->shell;
        QStringList answered;
        const auto note = [&](const QString &name) {
            return [&answered, name](int index) { answered << name + QString::number(index); };
        };
        shell.alertView()->show({.title = u"题"_s, .backButton = 0}, note(u"alert"_s));
        shell.actionSheet()->show({}, {}, {u"甲"_s}, {}, note(u"older sheet"_s));
        shell.actionSheet()->show({}, {}, {u"甲"_s}, {}, note(u"sheet"_s));
        shell.progressHUD()->show({});
        QVERIFY(shell.back());
        QCOMPARE(answered, QStringList {u"older sheet-1"_s});
        shell.progressHUD()->hide();
        QVERIFY(shell.back() && shell.back());
        QVERIFY(!shell.back());
        shell.actionSheet()->choose(0);
        QCOMPARE(answered, (QStringList {u"older sheet-1"_s, u"sheet-1"_s, u"alert0"_s}));
    }

    void inputReachesTheScreenOnlyWhenNothingBlocksIt_data()
    {
        Covers::rows({
            {"toast", [](auto &shell) { shell.toast()->show(u"请稍后"_s); }, true},
            {"indicator", [](auto &shell) { shell.progressHUD()->show(u"登录中"_s); }, false},
            {"alert", [](auto &shell) { shell.alertView()->show({.title = u"提醒"_s}); }, false},
            {"sheet", [](auto &shell) { shell.actionSheet()->show({}, {}, {u"甲"_s}, {}, {}); },
                false},
        });
    }

    void inputReachesTheScreenOnlyWhenNothingBlocksIt()
    {
        const auto [cover, reaches] = Covers::row();
        const auto *button = m_ui->itemWithText(u"按 home"_s);
        cover(m_ui->shell);
        // However often the keyboard moves on.
        bool focused = false;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(&m_ui->view, Qt::Key_Tab);
            focused = focused || button->hasActiveFocus();
        }
        QCOMPARE(focused, reaches);
        m_ui->click(button);
        QCOMPARE(button->property("clicks"), QVariant(reaches ? 1 : 0));
    }

    void anAlertIsFilledInOnEveryPhone_data()
    {
        Table<QSize>::rows({{"usual", QSize(390, 844)}, {"narrow", QSize(320, 568)}});
    }

    void anAlertIsFilledInOnEveryPhone()
    {
        m_ui->view.resize(std::get<0>(Table<QSize>::row()));
        AlertView *alerts = m_ui->shell.alertView();
        QStringList colours;
        for (int i = 0; i < 25; ++i)
            colours << u"#%1c040"_s.arg(QString::number(i + 16, 16)).left(7);
        std::optional<Alert> told;
        const auto answer = [&told](int, const Alert &filled) { told = filled; };
        alerts->ask({.title = u"h.example"_s,
                        .message = u"选择颜色"_s,
                        .buttons = Alert::cancelOrConfirm(),
                        .input = colours[3],
                        .inputName = u"颜色值"_s,
                        .colours = colours},
            answer);
        m_ui->click(m_ui->itemWithText(colours.last()));
        QCOMPARE(m_ui->itemWithText(u"颜色值"_s)->property("text"), QVariant(colours.last()));
        m_ui->click(m_ui->itemWithText(Alert::confirm));
        QVERIFY(told);
        QCOMPARE(told->input, colours.last());

        alerts->ask({.title = u"h.example"_s,
                        .message = u"此网站需要登录：“Class 3”\n连接未加密，密码可能被他人看到。"_s,
                        .buttons = {Alert::cancel, u"登录"_s},
                        .input = QString(),
                        .inputName = u"用户名"_s,
                        .password = QString()},
            answer);
        told.reset();
        // By the keyboard alone.
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_B, Qt::Key_Return})
            QTest::keyClick(&m_ui->view, key);
        QVERIFY(told);
        QCOMPARE(told->input, u"a"_s);
        QCOMPARE(told->password, u"b"_s);
    }
};

QTEST_MAIN(ShellTest)
#include "ShellTest.moc"
