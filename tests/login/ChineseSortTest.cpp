#include "login/BMChineseSort.h"
#include "login/MandarinLatin.h"
#include "login/PinyinSearchKey.h"
#include "model/DataModel.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

BMChineseSortSetting screenSetting()
{
    BMChineseSortSetting setting;
    setting.sortMode = BMChineseSortSetting::SortMode::Transliteration;
    return setting;
}

//! "A: 安庆 安阳 | C: 成都": one line that shows titles, order and grouping at once.
QString text(const QStringList &names, const BMChineseSortSetting &setting)
{
    const auto sections = BMChineseSort::sortAndGroup(names, setting);
    QStringList lines;
    for (qsizetype i = 0; i < sections.firstLetterArray.size(); ++i) {
        QString line = sections.firstLetterArray.at(i) + u':';
        for (const qsizetype position : sections.sortedModelArr.at(i))
            line += u' ' + names.at(position);
        lines << line;
    }
    return lines.join(u" | ");
}

}

class ChineseSortTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groupsByTheFirstLetterOfTheReading_data();
    void groupsByTheFirstLetterOfTheReading();
    void followsItsSetting_data();
    void followsItsSetting();
    void sortsRecordsByTheNamedProperty();
    void buildsSearchKeys_data();
    void buildsSearchKeys();
};

void ChineseSortTest::groupsByTheFirstLetterOfTheReading_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no names") << QStringList {} << u""_s;
    QTest::newRow("letters in order")
        << QStringList {u"武汉"_s, u"北京"_s, u"安阳"_s} << u"A: 安阳 | B: 北京 | W: 武汉"_s;
    QTest::newRow("within a section, syllable by syllable")
        << QStringList {u"杭州"_s, u"海门"_s, u"海安"_s, u"合肥"_s} << u"H: 海安 海门 杭州 合肥"_s;
    QTest::newRow("polyphones by the table, not by their general reading") << QStringList {
        u"重庆"_s, u"厦门"_s, u"长沙"_s, u"沈阳"_s} << u"C: 长沙 重庆 | S: 沈阳 | X: 厦门"_s;
    QTest::newRow("the table is about how a name starts") << QStringList {u"重点中学"_s,
        u"大厦小学"_s, u"校长学院"_s} << u"D: 大厦小学 | X: 校长学院 | Z: 重点中学"_s;
    QTest::newRow("names of one polyphone stay together")
        << QStringList {u"长沙"_s, u"成都"_s, u"长春"_s, u"重庆"_s} << u"C: 长春 长沙 成都 重庆"_s;
    QTest::newRow("Latin starts, either case, stand under their letter")
        << QStringList {u"BDFZ附中"_s, u"abc学校"_s, u"北京"_s, u"Ｃ校"_s}
        << u"A: abc学校 | B: BDFZ附中 北京 | C: Ｃ校"_s;
    QTest::newRow("whatever begins with no letter stands in front") << QStringList {u"安阳"_s,
        u"37中"_s, u"（新）实验"_s, u""_s, u"Яхта"_s} << u"#:  （新）实验 37中 Яхта | A: 安阳"_s;
    QTest::newRow("a character outside the basic plane")
        << QStringList {u"安阳"_s, u"𠮷中"_s} << u"#: 𠮷中 | A: 安阳"_s;
    QTest::newRow("equal readings, ordered by their characters") << QStringList {
        u"试验小学"_s, u"实验小学"_s, u"试验小学"_s} << u"S: 实验小学 试验小学 试验小学"_s;
}

void ChineseSortTest::groupsByTheFirstLetterOfTheReading()
{
    QFETCH(const QStringList, names);
    QTEST(text(names, screenSetting()), "expected");
}

void ChineseSortTest::followsItsSetting_data()
{
    QTest::addColumn<BMChineseSortSetting>("setting");
    QTest::addColumn<QString>("expected");

    BMChineseSortSetting last = screenSetting();
    last.specialCharPositionIsFront = false;
    last.specialCharSectionTitle = u"其他"_s;
    QTest::newRow("special section last, by another title")
        << last << u"C: 长沙 | S: 实验 试验 | 其他: 3中"_s;

    BMChineseSortSetting stable = screenSetting();
    stable.needStable = true;
    QTest::newRow("equal readings as they came") << stable << u"#: 3中 | C: 长沙 | S: 试验 实验"_s;

    BMChineseSortSetting ignoring = screenSetting();
    ignoring.ignoreModelWithPrefix = u"3"_s;
    QTest::newRow("a prefix left out") << ignoring << u"C: 长沙 | S: 实验 试验"_s;

    BMChineseSortSetting mapped = screenSetting();
    mapped.polyphoneMapping = {{u"长"_s, u"C"_s}, {u"长沙"_s, u"ZS"_s}};
    QTest::newRow("the longer entry of the table wins")
        << mapped << u"#: 3中 | S: 实验 试验 | Z: 长沙"_s;

    QTest::newRow("the default mode")
        << BMChineseSortSetting() << u"#: 3中 | C: 长沙 | S: 实验 试验"_s;
}

void ChineseSortTest::followsItsSetting()
{
    QFETCH(const BMChineseSortSetting, setting);
    QTEST(text({u"试验"_s, u"3中"_s, u"实验"_s, u"长沙"_s}, setting), "expected");
}

void ChineseSortTest::sortsRecordsByTheNamedProperty()
{
    const DataModel beijing {u"北京"_s, u"2"_s, true, u"u"_s, u"q"_s, u"s"_s};
    const DataModel anyang {u"安阳"_s, u"1"_s, false, {}, {}, {}};
    const auto byName
        = BMChineseSort::sortAndGroup(QList<DataModel> {beijing, anyang}, "aName", screenSetting());
    QCOMPARE(byName.firstLetterArray, (QStringList {u"A"_s, u"B"_s}));
    QCOMPARE(byName.sortedModelArr, (QList<QList<DataModel>> {{anyang}, {beijing}}));

    const auto byCode = BMChineseSort::sortAndGroup(
        QList<DataModel> {beijing, anyang}, "aSiteCode", screenSetting());
    QCOMPARE(byCode.sortedModelArr, (QList<QList<DataModel>> {{anyang, beijing}}));
}

void ChineseSortTest::buildsSearchKeys_data()
{
    using PinyinSearchKey::QuanPin;
    QTest::addColumn<QString>("name");
    QTest::addColumn<QuanPin>("isQuanPin");
    QTest::addColumn<QString>("key");

    QTest::newRow("initial and name") << u"北京四中"_s << QuanPin::No << u"#b,#北京四中"_s;
    QTest::newRow("长 is c") << u"长沙一中"_s << QuanPin::No << u"#c,#长沙一中"_s;
    QTest::newRow("厦 is x") << u"厦门一中"_s << QuanPin::No << u"#x,#厦门一中"_s;
    QTest::newRow("重 keeps its general reading") << u"重点"_s << QuanPin::No << u"#z,#重点"_s;
    QTest::newRow("Latin") << u"BDFZ附中"_s << QuanPin::No << u"#B,#BDFZ附中"_s;
    QTest::newRow("digit") << u"37中"_s << QuanPin::No << u"#3,#37中"_s;
    QTest::newRow("empty") << u""_s << QuanPin::No << u"#,#"_s;
    QTest::newRow("three syllables")
        << u"四川路"_s << QuanPin::Yes << u"#sichuanlu,si#chuanlu,sichuan#lu,#s,#四川路"_s;
    QTest::newRow("words and blanks are syllables too")
        << u"吕 BD中"_s << QuanPin::Yes << u"#luBDzhong,lu#BDzhong,luBD#zhong,#l,#吕 BD中"_s;
}

void ChineseSortTest::buildsSearchKeys()
{
    QFETCH(const QString, name);
    QFETCH(const PinyinSearchKey::QuanPin, isQuanPin);
    MandarinLatin latin;
    QTEST(PinyinSearchKey::transformToPinyin(name, isQuanPin, latin), "key");
}

QTEST_GUILESS_MAIN(ChineseSortTest)
#include "ChineseSortTest.moc"
