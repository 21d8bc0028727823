#include "ui/FontChooser.h"
#include "ui/HexColor.h"
#include "ui/SafeArea.h"
#include "ui/UiHarness.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkBoxShowsItsOwnersStateOnly()
    {
        UiHarness ui;
        ui.showControls("property int asked: 0; property bool agreed: false\n"
                        "ImageCheckBox { text: '同意'; selected: agreed; onClicked: asked++ }");
        const auto *box = ui.itemWithText(u"同意"_s);
        ui.click(box);
        QCOMPARE(ui.view.rootObject()->property("asked").toInt(), 1);
        QVERIFY(!box->property("checked").toBool());
        ui.view.rootObject()->setProperty("agreed", true);
        QVERIFY(box->property("checked").toBool());
        QVERIFY(box->width() >= 44 && box->height() >= 44);
    }

    void linksAreTouchedOnAllOfTheirLines()
    {
        // Too narrow for a link on one line.
        UiHarness ui;
        ui.showControls("LinkedText { width: 60; links: ["
                        "{ name: 'protocol', title: '《用户协议》' },"
                        "{ name: 'privacy', title: '《隐私政策》' }]\n"
                        "text: '登录即代表您已阅读同意《用户协议》和《隐私政策》' }");
        auto *text = ui.view.rootObject()->childItems().value(0);
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
        ui.showControls("SectionIndexBar { height: 400; titles: '#ABCDEFGHI'.split('') }");
        auto *bar = ui.view.rootObject()->childItems().value(0);
        QSignalSpy selected(bar, SIGNAL(sectionSelected(int)));
        const qreal cell = bar->property("cellHeight").toReal();
        const qreal top = (bar->height() - 10 * cell) / 2;
        const auto at = [&](qreal row) { return QPointF(30, top + (row + 0.5) * cell).toPoint(); };
        QTest::mousePress(&ui.view, Qt::LeftButton, {}, at(1));
        QTest::mouseMove(&ui.view, at(4));
        QTest::mouseMove(&ui.view, at(30));
        QTest::mouseRelease(&ui.view, Qt::LeftButton, {}, at(30));
        QCOMPARE(selected, QList<QVariantList>({{1}, {4}, {9}}));
    }

    void fieldInUseIsSeenInALowWindow()
    {
        UiHarness ui({320, 300}, 1.5);
        ui.showControls("FormView { anchors.fill: parent\n"
                        "Item { width: 1; height: 400 }\n"
                        "IconTextField { width: 200; placeholderText: '请输入密码' } }");
        auto *field = ui.itemWithText(u"请输入密码"_s);
        field->forceActiveFocus();
        const auto seen = [&] {
            const qreal top = field->mapToScene({0, 0}).y();
            return top >= 0 && top + field->height() <= ui.view.height();
        };
        TRY_VERIFY(seen());
        ui.view.resize(320, 220);
        TRY_COMPARE(ui.view.rootObject()->height(), 220);
        TRY_VERIFY(seen());
    }

    void readsColours_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QRgb>("argb");
        QTest::newRow("capitals and blanks") << u" #FF0000 "_s << 0xffff0000u;
        QTest::newRow("three digits without #") << u"f0a"_s << 0xffff00aau;
        QTest::newRow("alpha first") << u"#803dd187"_s << 0x803dd187u;
        for (const auto &bad : {u""_s, u"#12345"_s, u"##3dd187"_s, u"red"_s, u"#3dd18７"_s})
            QTest::newRow(qPrintable(u"no colour: "_s + bad)) << bad << 0u;
    }

    void readsColours()
    {
        QFETCH(QString, text);
        QTEST(colorWithHexString(text).rgba(), "argb");
    }

    void refusesBrokenInsetsAndTextScales()
    {
        SafeArea area;
        QVERIFY(area.setInsets(u"0, 21, 44.5, 44"_s));
        for (const auto &bad : {u""_s, u"44,34,1"_s, u"44,-1"_s, u"44,1e9"_s, u"44,nan"_s}) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^not a safe area"_s));
            QVERIFY2(!area.setInsets(bad), qPrintable(bad));
        }
        QVERIFY(area.bottom() == 21 && area.left() == 44.5);
        QCOMPARE(FontChooser::textScale(9, u"1.25"_s), 1.25);
        QCOMPARE(FontChooser::textScale(12, u"40"_s), 1.0);
        QCOMPARE(FontChooser::textScale(15, u"big"_s), 1.5);
    }
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
