#include "model/DictionaryMapper.h"

#include "model/DataModel.h"
#include "model/SchoolModel.h"
#include "model/StringFormat.h"
#include "model/UserModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QJsonObject object(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        qFatal("no object: %s", json.constData());
    return document.object();
}

}

//! A server's values as the properties of records, and as the text of messages.
class DictionaryMapperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsValues_data();
    void convertsValues();
    void goesByExactNamesAndLeavesWhatIsLacking();
    void knowsALocalSchool();
    void fillsTheFormat();
};

void DictionaryMapperTest::convertsValues_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("description");

    const auto row
        = [](const char *json, const QString &text, int number, const QString &description) {
              QTest::newRow(json) << QByteArray(json) << text << number << description;
          };
    const QString nil;
    row(R"("u1")", u"u1"_s, 0, u"u1"_s);
    row(R"("")", u""_s, 0, u""_s);
    row("null", nil, 0, u"<null>"_s);
    row(R"({"id":1})", nil, 0, uR"({"id":1})"_s);
    row(R"([5,"学"])", nil, 0, uR"([5,"学"])"_s);
    row("true", u"1"_s, 1, u"1"_s);
    row("-7", u"-7"_s, -7, u"-7"_s);
    row(R"(" 5 ")", u" 5 "_s, 5, u" 5 "_s);
    row(R"("5x")", u"5x"_s, 0, u"5x"_s);
    row("2147483647", u"2147483647"_s, 2147483647, u"2147483647"_s);
    row(R"("2147483648")", u"2147483648"_s, 0, u"2147483648"_s);
    // Five once cut to 32 bits.
    row("4294967301", u"4294967301"_s, 0, u"4294967301"_s);
    row("350203201109124524", u"350203201109124524"_s, 0, u"350203201109124524"_s);
    row(R"("99999999999999999999")", u"99999999999999999999"_s, 0, u"99999999999999999999"_s);
}

void DictionaryMapperTest::convertsValues()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    const QJsonObject values = object("{\"user_id\": " + json + ", \"user_type\": " + json + "}");
    const auto user = DictionaryMapper::model<UserModel>(values);
    QCOMPARE(user.user_id, text);
    QCOMPARE(user.user_id.isNull(), text.isNull());
    QTEST(user.user_type, "number");
    QTEST(StringFormat::description(values[u"user_id"]), "description");
}

void DictionaryMapperTest::goesByExactNamesAndLeavesWhatIsLacking()
{
    UserModel user;
    user.user_id = u"u1"_s;
    user.user_type = 2;
    UserModel expected = user;
    expected.mobile = u"139"_s;
    DictionaryMapper::fill(&user, UserModel::staticMetaObject,
        object(R"({"User_id": "a", "userId": "b", "objectName": "c", "mobile": "139",
            "user_type": "x"})"));
    QCOMPARE(user, expected);
}

void DictionaryMapperTest::knowsALocalSchool()
{
    const auto isLocal = [](const QByteArray &json) {
        const auto school
            = DictionaryMapper::model<SchoolModel>(object("{\"is_local\": " + json + "}"));
        return DataModel::fromSchool(school).isLocal;
    };
    for (const char *yes : {"1", R"("1")", "true", R"("true")"})
        QVERIFY2(isLocal(yes), yes);
    for (const char *no : {"0", R"("0")", "false", "null", R"("no")"})
        QVERIFY2(!isLocal(no), no);
}

void DictionaryMapperTest::fillsTheFormat()
{
    const auto format = [](const QString &text, const auto &...values) {
        return StringFormat::format(text, values...);
    };
    QCOMPARE(format(u"100% %@: %@"_s, QJsonValue(QJsonValue::Undefined), QString()),
        u"100% (null): (null)"_s);
    // What a value holds is never taken for a place to fill.
    QCOMPARE(format(u"%@-%@"_s, u"%@"_s, u"%1%d"_s), u"%@-%1%d"_s);
    QCOMPARE(format(u"none"_s, u"x"_s), u"none"_s);
    QCOMPARE(format(u"%@ and %@"_s, u"x"_s), u"x and %@"_s);
}

QTEST_GUILESS_MAIN(DictionaryMapperTest)
#include "DictionaryMapperTest.moc"
