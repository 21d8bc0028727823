#include "ui/PickerViewController.h"
#include "ui/UiHarness.h"

#include <QWheelEvent>

using namespace Qt::StringLiterals;

using Columns = PickerViewController::Columns;
using Selection = PickerViewController::Selection;

namespace {

const QList<PickerViewController::Row> places {{u"北京"_s, {u"东城"_s, u"西城"_s}},
    {u"福建"_s, {u"厦门"_s, u"福州"_s, u"泉州"_s}}, {u"海南"_s, {}}, {u"新疆"_s, {u"乌鲁木齐"_s}}};

}

//! The picker in a window: turned by every means a person has.
class PickerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<UiHarness> m_ui;
    QPointer<PickerViewController> m_picker;
    QList<Selection> m_answers;
    QPointingDevice *m_finger = QTest::createTouchDevice();

    void show(Columns columns, const Selection &preset)
    {
        m_answers.clear();
        m_ui = std::make_unique<UiHarness>();
        m_ui->showRootView();
        m_picker = new PickerViewController(&m_ui->shell, u"选择省市"_s, columns, places, preset,
            [this](const Selection &selection) { m_answers << selection; });
        m_picker->show();
        TRY_VERIFY(m_ui->itemWithText(u"选择省市"_s));
        TRY_COMPARE(m_ui->itemWithText(u"选择省市"_s)->property("outside").toReal(), 0);
    }

    Selection now() const { return {m_picker->firstIndex(), m_picker->secondIndex()}; }

    QPoint middleOf(const QString &text) const
    {
        const auto *item = m_ui->itemWithText(text);
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }

    void touch(const QPoint &at)
    {
        QTest::touchEvent(&m_ui->view, m_finger).press(0, at).commit();
        QTest::touchEvent(&m_ui->view, m_finger).release(0, at).commit();
    }

    void turnWheel(const QPoint &at, int angle)
    {
        QWheelEvent event(at, m_ui->view.mapToGlobal(at), {}, {0, angle}, Qt::NoButton,
            Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&m_ui->view, &event);
    }

    void key(Qt::Key key) { QTest::keyClick(&m_ui->view, key); }

private Q_SLOTS:
    void cleanup() { m_ui.reset(); }

    void startsWhereItIsTold_data()
    {
        QTest::addColumn<Selection>("preset");
        QTest::addColumn<Selection>("stands");
        QTest::newRow("there") << Selection {1, 2} << Selection {1, 2};
        QTest::newRow("nowhere") << Selection {-1, -1} << Selection {0, 0};
        QTest::newRow("beyond") << Selection {9, 2} << Selection {0, 0};
        QTest::newRow("no second") << Selection {2, 0} << Selection {2, -1};
    }

    void startsWhereItIsTold()
    {
        QFETCH(const Selection, preset);
        show(Columns::Two, preset);
        QTEST(now(), "stands");
        m_picker->confirm();
        m_picker->confirm();
        TRY_VERIFY(!m_picker);
        QFETCH(const Selection, stands);
        QCOMPARE(m_answers, QList<Selection> {stands});
    }

    void isTurnedByTouchDragWheelAndKeys()
    {
        show(Columns::Two, {0, 0});
        // The rows beside the one in the middle tell when a wheel rests.
        const QPoint lower = middleOf(u"福建"_s);
        const QPoint upper = lower - 2 * QPoint(0, lower.y() - middleOf(u"北京"_s).y());
        m_ui->click(m_ui->itemWithText(u"福建"_s));
        TRY_COMPARE(now(), (Selection {1, 0}));
        TRY_VERIFY(m_ui->itemWithText(u"厦门"_s));
        // Two quick touches at one place are two steps.
        TRY_COMPARE(middleOf(u"海南"_s), lower);
        touch(lower);
        TRY_COMPARE(middleOf(u"新疆"_s), lower);
        touch(lower);
        TRY_COMPARE(now(), (Selection {3, 0}));
        TRY_COMPARE(middleOf(u"海南"_s), upper);
        m_ui->click(m_ui->itemWithText(u"福建"_s));
        TRY_COMPARE(now(), (Selection {1, 0}));
        TRY_COMPARE(middleOf(u"海南"_s), lower);
        QCOMPARE(middleOf(u"福州"_s).y(), lower.y());
        turnWheel(middleOf(u"厦门"_s), -120);
        turnWheel(middleOf(u"厦门"_s), -60);
        TRY_COMPARE(now(), (Selection {1, 1}));

        const QPoint at = middleOf(u"福建"_s);
        QTest::mousePress(&m_ui->view, Qt::LeftButton, {}, at);
        for (int way = 0; way <= 160; way += 10)
            QTest::mouseMove(&m_ui->view, at - QPoint(0, way), 20);
        QTest::mouseRelease(&m_ui->view, Qt::LeftButton, {}, at - QPoint(0, 160));
        TRY_COMPARE(now(), (Selection {3, 0}));

        key(Qt::Key_Home);
        TRY_COMPARE(now(), (Selection {0, 0}));
        key(Qt::Key_Down);
        key(Qt::Key_Right);
        key(Qt::Key_End);
        TRY_COMPARE(now(), (Selection {1, 2}));
        key(Qt::Key_Left);
        key(Qt::Key_Up);
        TRY_COMPARE(now(), (Selection {0, 0}));
        key(Qt::Key_Return);
        TRY_VERIFY(!m_picker);
        QCOMPARE(m_answers, (QList<Selection> {{0, 0}}));
    }

    void isCancelledByButtonBackKeyAndATouchBeside_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("button") << 0;
        QTest::newRow("back key") << 1;
        QTest::newRow("beside") << 2;
    }

    void isCancelledByButtonBackKeyAndATouchBeside()
    {
        QFETCH(const int, way);
        show(Columns::One, {1});
        QVERIFY(!m_ui->itemWithText(u"厦门"_s));
        if (way == 0)
            m_ui->click(m_ui->itemWithText(u"取消"_s));
        else if (way == 1)
            key(Qt::Key_Escape);
        else
            QTest::mouseClick(&m_ui->view, Qt::LeftButton, {}, QPoint(100, 100));
        TRY_VERIFY(!m_picker);
        QVERIFY(m_answers.isEmpty());
    }
};

QTEST_MAIN(PickerTest)
#include "PickerTest.moc"
