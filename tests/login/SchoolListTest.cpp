#include "login/pinyin/BMChineseSort.h"
#include "login/school/SchoolListModel.h"
#include "support/Patience.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

//! "A: 安庆 安阳 | C: 成都": one line that shows titles, order and grouping at once.
QString grouped(const QStringList &names)
{
    BMChineseSortSetting setting;
    setting.sortMode = BMChineseSortSetting::SortMode::Transliteration;
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

//! "A 安庆 | B 北京"
QString shown(const SchoolListModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.index(row).data(SchoolListModel::SectionRole).toString() + u' '
                + model.index(row).data(SchoolListModel::NameRole).toString();
    return rows.join(u" | ");
}

QList<DataModel> schools(const QStringList &names)
{
    QList<DataModel> rows;
    for (const QString &name : names)
        rows << DataModel {name, u"code-"_s + name, false, {}, {}, {}};
    return rows;
}

}

class SchoolListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SchoolListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;

private Q_SLOTS:
    void init()
    {
        m_tester.reset();
        m_model = std::make_unique<SchoolListModel>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
        m_model->setSchools(schools({u"长沙一中"_s, u"厦门一中"_s, u"安阳小学"_s, u"BDFZ附中"_s,
            u"37中"_s, u"北京小学"_s}));
        TRY_COMPARE(m_model->rowCount(), 6);
    }

    void groupsByTheFirstLetterOfTheReading_data()
    {
        QTest::addColumn<QString>("names"); // with a blank between them
        QTest::addColumn<QString>("expected");
        QTest::newRow("syllable by syllable")
            << u"杭州 海门 海安 合肥"_s << u"H: 海安 海门 杭州 合肥"_s;
        QTest::newRow("polyphones by the table, together")
            << u"长沙 成都 长春 重庆 厦门 沈阳"_s
            << u"C: 长春 长沙 成都 重庆 | S: 沈阳 | X: 厦门"_s;
        QTest::newRow("the table is about how a name starts")
            << u"重点中学 大厦小学 校长学院"_s << u"D: 大厦小学 | X: 校长学院 | Z: 重点中学"_s;
        QTest::newRow("Latin, either case and width")
            << u"BDFZ附中 abc学校 北京 Ｃ校"_s << u"A: abc学校 | B: BDFZ附中 北京 | C: Ｃ校"_s;
        QTest::newRow("what begins with no letter")
            << u"安阳 37中 （新）实验 Яхта 𠮷中"_s << u"#: （新）实验 37中 Яхта 𠮷中 | A: 安阳"_s;
    }

    void groupsByTheFirstLetterOfTheReading()
    {
        QFETCH(const QString, names);
        QTEST(grouped(names.split(u' ')), "expected");
    }

    void theNewestTextWins()
    {
        QSignalSpy resets(m_model.get(), &SchoolListModel::modelReset);
        for (const QString &text : {u"一"_s, u"一中"_s, u"x"_s})
            m_model->setSearchText(text);
        TRY_COMPARE(resets.size(), 1);
        QCOMPARE(shown(*m_model), u"X 厦门一中"_s);
        QCOMPARE(m_model->sectionTitles(), QStringList {u"X"_s});
        QCOMPARE(m_model->schoolAt(0)->aSiteCode, u"code-厦门一中"_s);
        QVERIFY(!m_model->schoolAt(1));

        m_model->setSearchText(u"一中"_s);
        m_model->setSearchText({});
        QVERIFY2(m_model->rowCount() == 6, "no text shows all at once");
        m_model->setSearchText(u"37"_s);
        TRY_COMPARE(shown(*m_model), u"# 37中"_s);
        m_model->setSchools(schools({u"成都一中"_s, u"成都小学"_s}));
        m_model->setSearchText(u"一中"_s);
        TRY_COMPARE(shown(*m_model), u"C 成都一中"_s);
    }

    void diesWhileWorking()
    {
        m_model->setSchools(schools(QStringList(5000, u"学校"_s)));
        m_model->setSearchText(u"学"_s);
        m_tester.reset();
        m_model.reset();
        QVERIFY(QThreadPool::globalInstance()->waitForDone());
        QCoreApplication::processEvents();
    }
};

QTEST_GUILESS_MAIN(SchoolListTest)
#include "SchoolListTest.moc"
