#include "model/StringFormat.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

class StringFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesValues_data();
    void describesValues();
    void fillsTheFormat();
};

void StringFormatTest::describesValues_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << QVariant(u"密码错误"_s) << u"密码错误"_s;
    QTest::newRow("empty text") << QVariant(u""_s) << u""_s;
    QTest::newRow("nil text") << QVariant(QString()) << u"(null)"_s;
    QTest::newRow("nothing") << QVariant() << u"(null)"_s;
    QTest::newRow("absent member")
        << QVariant::fromValue(QJsonValue(QJsonValue::Undefined)) << u"(null)"_s;
    QTest::newRow("null of a server")
        << QVariant::fromValue(QJsonValue(QJsonValue::Null)) << u"<null>"_s;
    QTest::newRow("integer") << QVariant::fromValue(QJsonValue(8888)) << u"8888"_s;
    QTest::newRow("large integer")
        << QVariant::fromValue(QJsonValue(qint64(1700000000000))) << u"1700000000000"_s;
    QTest::newRow("fraction") << QVariant::fromValue(QJsonValue(24.5)) << u"24.5"_s;
    QTest::newRow("true") << QVariant::fromValue(QJsonValue(true)) << u"1"_s;
    QTest::newRow("false") << QVariant::fromValue(QJsonValue(false)) << u"0"_s;
    QTest::newRow("object") << QVariant::fromValue(QJsonValue(QJsonObject {{u"a"_s, 1}}))
                            << uR"({"a":1})"_s;
    QTest::newRow("list") << QVariant::fromValue(QJsonValue(QJsonArray {1, u"学"_s}))
                          << uR"([1,"学"])"_s;
    QTest::newRow("map") << QVariant(QVariantMap {{u"b"_s, QVariantList {1}}}) << uR"({"b":[1]})"_s;
}

void StringFormatTest::describesValues()
{
    QFETCH(QVariant, value);
    if (value.metaType() == QMetaType::fromType<QJsonValue>())
        QTEST(StringFormat::description(value.value<QJsonValue>()), "text");
    else
        QTEST(StringFormat::description(value), "text");
}

void StringFormatTest::fillsTheFormat()
{
    const auto format = [](const QString &text, const auto &...values) {
        return StringFormat::format(text, values...);
    };
    QCOMPARE(format(u"ResponseStateFailed%@"_s, QJsonValue(QJsonValue::Undefined)),
        u"ResponseStateFailed(null)"_s);
    QCOMPARE(format(u"Unarchive of %@ failed: %@"_s, u"key"_s, QString()),
        u"Unarchive of key failed: (null)"_s);
    // What a value holds is never taken for a place to fill.
    QCOMPARE(format(u"%@-%@"_s, u"%@"_s, u"%1%d"_s), u"%@-%1%d"_s);
    QCOMPARE(format(u"100% %@"_s, QJsonValue(1)), u"100% 1"_s);
    QCOMPARE(format(u"none"_s, u"x"_s), u"none"_s);
    QCOMPARE(format(u"%@ and %@"_s, u"x"_s), u"x and %@"_s);
}

QTEST_GUILESS_MAIN(StringFormatTest)
#include "StringFormatTest.moc"
