#include "login/SchoolListModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

QStringList shown(const SchoolListModel &model)
{
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row)
        names << model.index(row).data(SchoolListModel::SectionRole).toString() + u' '
                + model.index(row).data(SchoolListModel::NameRole).toString();
    return names;
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

private Q_SLOTS:
    void init();
    void showsAllUnderTheirSections();
    void findsByTheSearchKey_data();
    void findsByTheSearchKey();
    void emptyTextShowsAllAtOnce();
    void theNewestTextWins();
    void aTextTypedWhileSortingCounts();
    void knowsTheSchoolOfAShownRow();
    void diesWhileWorking();

private:
    std::unique_ptr<SchoolListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void SchoolListTest::init()
{
    m_tester.reset();
    m_model = std::make_unique<SchoolListModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
    m_model->setSchools(schools(
        {u"长沙一中"_s, u"厦门一中"_s, u"安阳小学"_s, u"BDFZ附中"_s, u"37中"_s, u"北京小学"_s}));
    QTRY_COMPARE(m_model->rowCount(), 6);
}

void SchoolListTest::showsAllUnderTheirSections()
{
    QCOMPARE(shown(*m_model),
        (QStringList {u"# 37中"_s, u"A 安阳小学"_s, u"B BDFZ附中"_s, u"B 北京小学"_s,
            u"C 长沙一中"_s, u"X 厦门一中"_s}));
    QCOMPARE(m_model->sectionTitles(), (QStringList {u"#"_s, u"A"_s, u"B"_s, u"C"_s, u"X"_s}));
    QCOMPARE(m_model->rowOfSection(u"B"_s), 2);
    QCOMPARE(m_model->rowOfSection(u"Z"_s), -1);
}

void SchoolListTest::findsByTheSearchKey_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");

    const QStringList beginWithB {u"B BDFZ附中"_s, u"B 北京小学"_s};
    QTest::newRow("initial") << u"c"_s << QStringList {u"C 长沙一中"_s};
    QTest::newRow("initial, upper case") << u"X"_s << QStringList {u"X 厦门一中"_s};
    QTest::newRow("initial or name") << u"b"_s << beginWithB;
    QTest::newRow("part of the name")
        << u"一中"_s << QStringList {u"C 长沙一中"_s, u"X 厦门一中"_s};
    QTest::newRow("Latin part, other case") << u"dfZ附"_s << QStringList {u"B BDFZ附中"_s};
    QTest::newRow("the last of all keys") << u"厦门一中"_s << QStringList {u"X 厦门一中"_s};
    QTest::newRow("a full pinyin does not match") << u"changsha"_s << QStringList {};
    QTest::newRow("never across two keys") << u"中#"_s << QStringList {};
    QTest::newRow("nor by the separator") << QString(QChar(u'\0')) << QStringList {};
    QTest::newRow("# is in every key")
        << u"#"_s
        << QStringList {u"# 37中"_s, u"A 安阳小学"_s, u"B BDFZ附中"_s, u"B 北京小学"_s,
               u"C 长沙一中"_s, u"X 厦门一中"_s};
}

void SchoolListTest::findsByTheSearchKey()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, found);
    QSignalSpy resets(m_model.get(), &SchoolListModel::modelReset);
    m_model->setSearchText(text);
    QVERIFY2(resets.isEmpty(), "the search must not run in the call");
    QTRY_COMPARE(resets.size(), 1);
    QCOMPARE(shown(*m_model), found);

    QStringList titles;
    for (const QString &row : found)
        titles << row.left(1);
    titles.removeDuplicates();
    QCOMPARE(m_model->sectionTitles(), titles);
}

void SchoolListTest::emptyTextShowsAllAtOnce()
{
    m_model->setSearchText(u"一中"_s);
    QTRY_COMPARE(m_model->rowCount(), 2);
    m_model->setSearchText({});
    QCOMPARE(m_model->rowCount(), 6);
}

void SchoolListTest::theNewestTextWins()
{
    QSignalSpy resets(m_model.get(), &SchoolListModel::modelReset);
    for (const QString &text : {u"一"_s, u"一中"_s, u"x"_s})
        m_model->setSearchText(text);
    QTRY_COMPARE(resets.size(), 1);
    QCOMPARE(shown(*m_model), QStringList {u"X 厦门一中"_s});

    m_model->setSearchText(u"一中"_s);
    m_model->setSearchText({});
    m_model->setSearchText(u"37"_s);
    QTRY_COMPARE(shown(*m_model), QStringList {u"# 37中"_s});
}

void SchoolListTest::aTextTypedWhileSortingCounts()
{
    m_model->setSchools(schools({u"成都一中"_s, u"成都小学"_s}));
    m_model->setSearchText(u"一中"_s);
    QTRY_COMPARE(shown(*m_model), QStringList {u"C 成都一中"_s});
}

void SchoolListTest::knowsTheSchoolOfAShownRow()
{
    m_model->setSearchText(u"一中"_s);
    QTRY_COMPARE(m_model->rowCount(), 2);
    QCOMPARE(m_model->schoolAt(1)->aSiteCode, u"code-厦门一中"_s);
    QVERIFY(!m_model->schoolAt(-1));
    QVERIFY(!m_model->schoolAt(2));
}

void SchoolListTest::diesWhileWorking()
{
    QStringList names;
    for (int i = 0; i < 5000; ++i)
        names << u"学校%1"_s.arg(i);
    m_model->setSchools(schools(names));
    m_model->setSearchText(u"学"_s);
    m_tester.reset();
    m_model.reset();
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(SchoolListTest)
#include "SchoolListTest.moc"
