#include "net/JsonFragment.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

class JsonFragmentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsAnyValueAtTheTop_data();
    void acceptsAnyValueAtTheTop();
    void refusesWhatIsNoValue_data();
    void refusesWhatIsNoValue();
};

void JsonFragmentTest::acceptsAnyValueAtTheTop_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QJsonValue>("value");

    QTest::newRow("object") << QByteArray(R"({"a":1})") << QJsonValue(QJsonObject {{u"a"_qs, 1}});
    QTest::newRow("list") << QByteArray("[1,2]") << QJsonValue(QJsonArray {1, 2});
    QTest::newRow("empty list") << QByteArray("[]") << QJsonValue(QJsonArray());
    QTest::newRow("number") << QByteArray("12") << QJsonValue(12);
    QTest::newRow("text") << QByteArray(R"("x],[")") << QJsonValue(u"x],["_qs);
    QTest::newRow("null") << QByteArray("null") << QJsonValue(QJsonValue::Null);
    QTest::newRow("false") << QByteArray("false") << QJsonValue(false);
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF{}") << QJsonValue(QJsonObject());
    QTest::newRow("white space") << QByteArray("\r\n {} \n") << QJsonValue(QJsonObject());
    QTest::newRow("above 2^53") << QByteArray("9007199254740993")
                                << QJsonValue(qint64(9007199254740993));
}

void JsonFragmentTest::acceptsAnyValueAtTheTop()
{
    QFETCH(QByteArray, text);
    QFETCH(QJsonValue, value);
    const auto parsed = JsonFragment::parse(text);
    QVERIFY(parsed);
    QCOMPARE(*parsed, value);
}

void JsonFragmentTest::refusesWhatIsNoValue_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("white space") << QByteArray(" \n");
    QTest::newRow("byte order mark alone") << QByteArray("\xEF\xBB\xBF");
    QTest::newRow("object cut off") << QByteArray(R"({"code":200,"data":{"a)");
    QTest::newRow("object not closed") << QByteArray(R"({"code":200)");
    QTest::newRow("two values") << QByteArray("1,2");
    QTest::newRow("two objects") << QByteArray("{}{}");
    QTest::newRow("trailing comma") << QByteArray("{},");
    QTest::newRow("lists back to back") << QByteArray("1],[2");
    QTest::newRow("word") << QByteArray("OK");
    QTest::newRow("page") << QByteArray("<html></html>");
    QTest::newRow("ill-formed UTF-8") << QByteArray("{\"a\":\"\xC3\x28\"}");
    QTest::newRow("endless nesting") << QByteArray(200'000, '[');
    QTest::newRow("deep nesting")
        << QByteArray(200'000, '[') + QByteArray(200'000, ']');
}

void JsonFragmentTest::refusesWhatIsNoValue()
{
    QFETCH(QByteArray, text);
    QVERIFY(!JsonFragment::parse(text));
}

QTEST_GUILESS_MAIN(JsonFragmentTest)
#include "JsonFragmentTest.moc"
