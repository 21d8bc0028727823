#include "model/DataModel.h"
#include "model/DeviceIdentifier.h"
#include "model/DictionaryMapper.h"
#include "model/SchoolModel.h"
#include "model/StringFormat.h"
#include "model/UserModel.h"
#include "support/Patience.h"

#include <QJsonDocument>
#include <QRegularExpression>

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

//! A server's values as the properties of records, and the identifier of the device.
class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theIdentifierIsMadeOnce()
    {
        const QString student = u"cn.vant.student"_s;
        // Of an earlier version; an empty item, which is none; none.
        for (const QByteArray &stored : {"stored"_ba, ""_ba, QByteArray()}) {
            const QTemporaryDir folder;
            KeyChainStore keychain(folder.path(), folder.filePath(u"keychain.ini"_s));
            if (!stored.isNull())
                QVERIFY(answerOf<bool>(
                    [&](const auto &then) { keychain.save(student, stored, then); }));
            const auto prepared = [&](const QString &key) {
                DeviceIdentifier identifier(&keychain, key);
                identifier.prepare();
                [&] { TRY_VERIFY(!identifier.uuid().isNull()); }();
                return identifier.uuid();
            };
            const QString made = prepared(student);
            static const QRegularExpression form(u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s);
            QVERIFY2(
                stored.isEmpty() ? form.match(made).hasMatch() : made == stored, qPrintable(made));
            TRY_COMPARE(prepared(student), made);
            QVERIFY(prepared(u"cn.vant.patriarch"_s) != made);
        }
    }

    void convertsValues()
    {
        const std::tuple<QByteArray, QString, int, QString> rows[] {
            {R"("u1")", u"u1"_s, 0, u"u1"_s},
            {R"("")", u""_s, 0, u""_s},
            {"null", {}, 0, u"<null>"_s},
            {R"({"id":1})", {}, 0, uR"({"id":1})"_s},
            {R"([5,"学"])", {}, 0, uR"([5,"学"])"_s},
            {"true", u"1"_s, 1, u"1"_s},
            {"-7", u"-7"_s, -7, u"-7"_s},
            {R"(" 5 ")", u" 5 "_s, 5, u" 5 "_s},
            {R"("5x")", u"5x"_s, 0, u"5x"_s},
            {"2147483647", u"2147483647"_s, 2147483647, u"2147483647"_s},
            {R"("2147483648")", u"2147483648"_s, 0, u"2147483648"_s},
            // Five once cut to 32 bits.
            {"4294967301", u"4294967301"_s, 0, u"4294967301"_s},
            {"350203201109124524", u"350203201109124524"_s, 0, u"350203201109124524"_s},
            {R"("99999999999999999999")", u"99999999999999999999"_s, 0, u"99999999999999999999"_s},
        };
        for (const auto &[json, text, number, description] : rows) {
            const QJsonObject values
                = object("{\"user_id\": " + json + ", \"user_type\": " + json + "}");
            const auto user = DictionaryMapper::model<UserModel>(values);
            QCOMPARE(user.user_id, text);
            QCOMPARE(user.user_id.isNull(), text.isNull());
            QCOMPARE(user.user_type, number);
            QCOMPARE(StringFormat::description(values[u"user_id"]), description);
        }
    }

    void knowsALocalSchool()
    {
        const auto isLocal = [](const char *json) {
            return DataModel::fromSchool(DictionaryMapper::model<SchoolModel>(
                                             object(QByteArray("{\"is_local\": ") + json + "}")))
                .isLocal;
        };
        for (const char *yes : {"1", R"("1")", "true", R"("true")", R"("True")", R"("YES")"})
            QVERIFY2(isLocal(yes), yes);
        for (const char *no : {"0", R"("0")", "false", "null", R"("no")"})
            QVERIFY2(!isLocal(no), no);
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "ModelTest.moc"
