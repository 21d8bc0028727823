#include "model/DictionaryMapper.h"

#include "model/DataModel.h"
#include "model/SchoolModel.h"
#include "model/UserModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QJsonObject object(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("%s: %s", json.constData(), qPrintable(error.errorString()));
    return document.object();
}

}

class DictionaryMapperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsText_data();
    void fillsText();
    void fillsNumbers_data();
    void fillsNumbers();
    void goesByExactNames();
    void leavesWhatTheDictionaryLacks();
    void knowsALocalSchool_data();
    void knowsALocalSchool();
};

void DictionaryMapperTest::fillsText_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << R"("u1")"_ba << u"u1"_s;
    QTest::newRow("empty text") << R"("")"_ba << u""_s;
    QTest::newRow("number") << "1024"_ba << u"1024"_s;
    QTest::newRow("number beyond 32 bits") << "350203201109124524"_ba << u"350203201109124524"_s;
    QTest::newRow("large whole number") << "1700000000000"_ba << u"1700000000000"_s;
    QTest::newRow("negative number") << "-7"_ba << u"-7"_s;
    QTest::newRow("fraction") << "24.5"_ba << u"24.5"_s;
    QTest::newRow("true") << "true"_ba << u"1"_s;
    QTest::newRow("false") << "false"_ba << u"0"_s;
    QTest::newRow("null") << "null"_ba << QString();
    QTest::newRow("object") << R"({"id": 1})"_ba << QString();
    QTest::newRow("list") << R"(["u1"])"_ba << QString();
}

void DictionaryMapperTest::fillsText()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    const auto user
        = DictionaryMapper::model<UserModel>(object("{\"user_id\": " + json + ", \"email\": \"e\"}"));
    QCOMPARE(user.user_id, text);
    QCOMPARE(user.user_id.isNull(), text.isNull());
    QCOMPARE(user.email, u"e"_s);
}

void DictionaryMapperTest::fillsNumbers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("number");

    constexpr int untouched = 0;
    QTest::newRow("number") << "5"_ba << 5;
    QTest::newRow("number as text") << R"("5")"_ba << 5;
    QTest::newRow("with blanks") << R"(" 5 ")"_ba << 5;
    QTest::newRow("negative") << R"("-1")"_ba << -1;
    QTest::newRow("true") << "true"_ba << 1;
    QTest::newRow("greatest") << "2147483647"_ba << 2147483647;
    QTest::newRow("one too great") << "2147483648"_ba << untouched;
    QTest::newRow("one too great, as text") << R"("2147483648")"_ba << untouched;
    QTest::newRow("five once cut to 32 bits") << "4294967301"_ba << untouched;
    QTest::newRow("far too great") << "1e300"_ba << untouched;
    QTest::newRow("far too great, as text") << R"("99999999999999999999")"_ba << untouched;
    QTest::newRow("words") << R"("five")"_ba << untouched;
    QTest::newRow("half a number") << R"("5x")"_ba << untouched;
    QTest::newRow("empty") << R"("")"_ba << untouched;
    QTest::newRow("null") << "null"_ba << untouched;
    QTest::newRow("object") << R"({"user_type": 5})"_ba << untouched;
    QTest::newRow("list") << "[5]"_ba << untouched;
}

void DictionaryMapperTest::fillsNumbers()
{
    QFETCH(QByteArray, json);
    const auto user = DictionaryMapper::model<UserModel>(object("{\"user_type\": " + json + "}"));
    QTEST(user.user_type, "number");
}

void DictionaryMapperTest::goesByExactNames()
{
    const auto user = DictionaryMapper::model<UserModel>(
        object(R"({"User_id": "a", "userId": "b", "objectName": "c", "user_name": "d"})"));
    UserModel expected;
    expected.user_name = u"d"_s;
    QCOMPARE(user, expected);
}

void DictionaryMapperTest::leavesWhatTheDictionaryLacks()
{
    UserModel user;
    user.user_id = u"u1"_s;
    user.user_type = 2;
    user.mobile = u"138"_s;
    DictionaryMapper::fill(
        &user, UserModel::staticMetaObject, object(R"({"mobile": "139", "user_type": "x"})"));
    QCOMPARE(user.user_id, u"u1"_s);
    QCOMPARE(user.user_type, 2);
    QCOMPARE(user.mobile, u"139"_s);
}

void DictionaryMapperTest::knowsALocalSchool_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isLocal");
    QTest::newRow("1") << "1"_ba << true;
    QTest::newRow("text 1") << R"("1")"_ba << true;
    QTest::newRow("true") << "true"_ba << true;
    QTest::newRow("text true") << R"("true")"_ba << true;
    QTest::newRow("0") << "0"_ba << false;
    QTest::newRow("text 0") << R"("0")"_ba << false;
    QTest::newRow("false") << "false"_ba << false;
    QTest::newRow("null") << "null"_ba << false;
    QTest::newRow("something else") << R"("no")"_ba << false;
}

void DictionaryMapperTest::knowsALocalSchool()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isLocal);
    const auto school = DictionaryMapper::model<SchoolModel>(object(
        R"({"full_name": "厦门一中", "site_code": "xmyz", "site_id": 7001, "url": "http://l/rb/",
            "url_qe": "http://l/qe/", "is_local": )"
        + json + "}"));
    const DataModel expected {
        u"厦门一中"_s, u"xmyz"_s, isLocal, u"http://l/rb/"_s, u"http://l/qe/"_s, u"7001"_s};
    QCOMPARE(DataModel::fromSchool(school), expected);
}

QTEST_GUILESS_MAIN(DictionaryMapperTest)
#include "DictionaryMapperTest.moc"
