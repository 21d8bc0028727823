#include "ui/FontChooser.h"
#include "ui/HexColor.h"
#include "ui/SafeArea.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class HelpersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsColours_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QRgb>("argb");
        QTest::newRow("with #") << u"#3dd187"_s << 0xff3dd187u;
        QTest::newRow("without #") << u"3dd187"_s << 0xff3dd187u;
        QTest::newRow("capitals and blanks") << u" #FF0000 "_s << 0xffff0000u;
        QTest::newRow("three digits") << u"#f0a"_s << 0xffff00aau;
        QTest::newRow("alpha first") << u"#803dd187"_s << 0x803dd187u;
        for (const auto &bad : {u""_s, u"#"_s, u"#12345"_s, u"#1234567"_s, u"##3dd187"_s, u"red"_s,
                 u"#3dd18g"_s, u"#3dd18７"_s, u"#123456789012"_s})
            QTest::newRow(qPrintable(u"no colour: "_s + bad)) << bad << 0u;
    }

    void readsColours()
    {
        QFETCH(QString, text);
        QFETCH(QRgb, argb);
        QCOMPARE(colorWithHexString(text).rgba(), argb);
    }

    void readsInsets_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<double>>("insets");
        QTest::newRow("two") << u"44,34"_s << QList<double> {44, 34, 0, 0};
        QTest::newRow("four") << u"0, 21, 44.5, 44"_s << QList<double> {0, 21, 44.5, 44};
        for (const auto &bad : {u""_s, u"44"_s, u"44,"_s, u"44,34,1"_s, u"44,-1"_s, u"44,1e9"_s,
                 u"44,nan"_s, u"a,b"_s})
            QTest::newRow(qPrintable(u"refused: "_s + bad)) << bad << QList<double>();
    }

    void readsInsets()
    {
        QFETCH(QString, text);
        QFETCH(QList<double>, insets);
        SafeArea area;
        QVERIFY(area.setInsets(u"1,2,3,4"_s));
        if (insets.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^not a safe area"_s));
        QCOMPARE(area.setInsets(text), !insets.isEmpty());
        const QList<double> standing {area.top(), area.bottom(), area.left(), area.right()};
        QCOMPARE(standing, insets.isEmpty() ? QList<double>({1, 2, 3, 4}) : insets);
    }

    void choosesAChineseFamily_data()
    {
        QTest::addColumn<QStringList>("available");
        QTest::addColumn<QStringList>("simplifiedChinese");
        QTest::addColumn<QString>("family");
        QTest::newRow("known before others")
            << QStringList {u"AR PL UMing"_s, u"WenQuanYi Micro Hei"_s}
            << QStringList {u"AR PL UMing"_s} << u"WenQuanYi Micro Hei"_s;
        QTest::newRow("better known first")
            << QStringList {u"Droid Sans Fallback"_s, u"Noto Sans CJK SC"_s} << QStringList()
            << u"Noto Sans CJK SC"_s;
        QTest::newRow("any that claims it") << QStringList {u"DejaVu Sans"_s, u"AR PL UMing"_s}
                                            << QStringList {u"AR PL UMing"_s} << u"AR PL UMing"_s;
        QTest::newRow("none") << QStringList {u"DejaVu Sans"_s} << QStringList() << QString();
    }

    void choosesAChineseFamily()
    {
        QFETCH(QStringList, available);
        QFETCH(QStringList, simplifiedChinese);
        QFETCH(QString, family);
        QCOMPARE(FontChooser::chineseFamily(available, simplifiedChinese), family);
    }

    void scalesTextWithTheUsersFont_data()
    {
        QTest::addColumn<double>("points");
        QTest::addColumn<QString>("environment");
        QTest::addColumn<double>("scale");
        QTest::newRow("small default") << 9.0 << QString() << 1.0;
        QTest::newRow("large default") << 12.0 << QString() << 1.0;
        QTest::newRow("large text") << 15.0 << QString() << 1.5;
        QTest::newRow("absurd") << 90.0 << QString() << 3.0;
        QTest::newRow("named") << 9.0 << u"1.25"_s << 1.25;
        QTest::newRow("named out of range") << 9.0 << u"40"_s << 1.0;
        QTest::newRow("named badly") << 15.0 << u"big"_s << 1.5;
    }

    void scalesTextWithTheUsersFont()
    {
        QFETCH(double, points);
        QFETCH(QString, environment);
        QFETCH(double, scale);
        QCOMPARE(FontChooser::textScale(points, environment), scale);
    }
};

QTEST_GUILESS_MAIN(HelpersTest)
#include "HelpersTest.moc"
