#include "ui/UiHarness.h"

#include <QAccessible>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QUrl sample(u"qrc:/samples/ControlsSample.qml"_s);

QAccessible::Role roleOf(QQuickItem *item)
{
    const auto *accessible = QAccessible::queryAccessibleInterface(item);
    return accessible ? accessible->role() : QAccessible::NoRole;
}

//! All that is touched and has a text.
QList<QQuickItem *> buttonsOf(const UiHarness &ui)
{
    auto items = ui.itemsWith("text");
    items.removeIf([](QQuickItem *item) {
        return !QList {QAccessible::Button, QAccessible::CheckBox, QAccessible::Link}.contains(
            roleOf(item));
    });
    return items;
}

} // namespace

class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyButtonIsReadOutByItsTextAndCanBePressed()
    {
        UiHarness ui;
        ui.show(sample);
        QMap<QString, QString> pressed;
        for (QQuickItem *button : buttonsOf(ui)) {
            auto *accessible = QAccessible::queryAccessibleInterface(button);
            const QString name = accessible->text(QAccessible::Name);
            QCOMPARE(name, button->property("text").toString());
            ui.view.rootObject()->setProperty("lastAction", {});
            accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            pressed[name] = ui.view.rootObject()->property("lastAction").toString();
        }
        const QMap<QString, QString> expected {{u"返回"_s, u"返回"_s},
            {u"已阅读同意"_s, u"selected"_s}, {u"《用户协议》"_s, u"protocol"_s},
            {u"《隐私政策》"_s, u"privacy"_s}, {u"登录"_s, u"登录"_s},
            {u"忘记密码"_s, u"忘记密码"_s}, {u"重新加载"_s, u"重新加载"_s}};
        QCOMPARE(pressed, expected);
    }

    void checkBoxShowsItsOwnersStateOnly()
    {
        UiHarness ui;
        ui.show(sample);
        auto *box = ui.itemWithText(u"已阅读同意"_s);
        QCOMPARE(roleOf(box), QAccessible::CheckBox);
        ui.click(box);
        QVERIFY(box->property("checked").toBool());
        ui.view.rootObject()->setProperty("agreed", false);
        QVERIFY(!box->property("checked").toBool());
        ui.view.rootObject()->setProperty("refuses", true);
        ui.click(box);
        QVERIFY(!box->property("checked").toBool());
    }

    void fieldsAreReadOutByTheirPlaceholders()
    {
        UiHarness ui;
        ui.show(sample);
        const auto fields = ui.itemsWith("placeholderText");
        QCOMPARE(fields.size(), 3);
        for (QQuickItem *field : fields) {
            const auto *accessible = QAccessible::queryAccessibleInterface(field);
            QVERIFY(accessible);
            QCOMPARE(accessible->role(), QAccessible::EditableText);
            QCOMPARE(
                accessible->text(QAccessible::Name), field->property("placeholderText").toString());
        }
        QVERIFY(QAccessible::queryAccessibleInterface(fields.last())->state().passwordEdit);
    }

    void nothingIsCutOrTooSmallToTouch_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("textScale");
        for (const QSize size : {QSize(320, 568), QSize(390, 844), QSize(1280, 800)}) {
            for (const double scale : {1.0, 1.5})
                QTest::addRow("%d wide at %g", size.width(), scale) << size << scale;
        }
    }

    void nothingIsCutOrTooSmallToTouch()
    {
        QFETCH(QSize, size);
        QFETCH(double, textScale);
        UiHarness ui(size, textScale);
        ui.show(sample);
        for (QQuickItem *item : ui.itemsWith("paintedWidth")) {
            const QString text = item->property("text").toString();
            if (text.isEmpty() || item->metaObject()->indexOfProperty("truncated") < 0)
                continue;
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(text));
            QVERIFY2(
                item->property("paintedWidth").toReal() <= item->width() + 1, qPrintable(text));
            QVERIFY2(
                item->mapToScene({item->width(), 0}).x() <= size.width() + 1, qPrintable(text));
        }
        for (QQuickItem *button : buttonsOf(ui)) {
            QVERIFY2(roleOf(button) == QAccessible::Link
                    || (button->width() >= 44 && button->height() >= 44),
                qPrintable(button->property("text").toString()));
        }
        const auto *button = ui.itemWithText(u"登录"_s);
        QVERIFY(button->width() <= 480);
    }

    void linksAreTouchedOnAllOfTheirLines()
    {
        UiHarness ui;
        ui.show(sample);
        auto *text = ui.view.rootObject()->property("linkedText").value<QQuickItem *>();
        // Too narrow for a link on one line.
        text->setWidth(60);
        QSignalSpy activated(text, SIGNAL(linkActivated(QString)));
        QMap<QString, QList<qreal>> touched;
        for (qreal y = 4; y < text->height(); y += 4) {
            for (qreal x = 4; x < text->width(); x += 8) {
                activated.clear();
                QTest::mouseClick(&ui.view, Qt::LeftButton, {}, text->mapToScene({x, y}).toPoint());
                QVERIFY(activated.size() <= 1);
                if (activated.size() == 1)
                    touched[activated[0][0].toString()] << y;
            }
        }
        QCOMPARE(touched.keys(), QStringList({u"privacy"_s, u"protocol"_s}));
        const qreal line = text->property("pixelSize").toReal() * 1.4;
        for (const auto &places : std::as_const(touched))
            QVERIFY(places.last() - places.first() > 1.9 * line);
    }

    void sectionsAreJumpedToByTouchAndDrag()
    {
        UiHarness ui;
        ui.show(sample);
        auto *bar = ui.itemsWith("touchedIndex").value(0);
        QVERIFY(bar);
        QSignalSpy selected(bar, SIGNAL(sectionSelected(int)));
        const QPointF edge = bar->mapToScene({bar->width() - 12, 0});
        const qreal cell = bar->property("cellHeight").toReal();
        const qreal top = edge.y() + (bar->height() - 27 * cell) / 2;
        const auto at
            = [&](qreal row) { return QPointF(edge.x(), top + (row + 0.5) * cell).toPoint(); };

        QTest::mousePress(&ui.view, Qt::LeftButton, {}, at(1));
        QTest::mouseMove(&ui.view, at(4));
        QTest::mouseMove(&ui.view, at(30));
        QTest::mouseRelease(&ui.view, Qt::LeftButton, {}, at(30));
        QList<int> sections;
        for (const auto &arguments : std::as_const(selected))
            sections << arguments.at(0).toInt();
        QCOMPARE(sections, QList<int>({1, 4, 26}));
    }

    void fieldInUseIsSeenInALowWindow()
    {
        UiHarness ui({320, 300}, 1.5);
        ui.show(sample);
        auto *field = ui.itemsWith("placeholderText").last();
        field->forceActiveFocus();
        const auto seen = [&] {
            const qreal top = field->mapToScene({0, 0}).y();
            return top >= 72 && top + field->height() <= ui.view.height();
        };
        QTRY_VERIFY(seen());
        ui.view.resize(320, 220);
        QTRY_COMPARE(ui.view.rootObject()->height(), 220);
        QTRY_VERIFY(seen());
    }
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
