#include "model/LoginModel.h"

#include "model/DataModel.h"
#include "model/DeviceIdentifier.h"
#include "model/DictionaryMapper.h"
#include "model/SchoolModel.h"
#include "model/StringFormat.h"
#include "support/Patience.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

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

//! What is kept of a login, a server's values as the properties of records, and the identifier of
//! the device that it is made from.
class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(file());
        m_model = std::make_unique<LoginModel>(m_defaults.get());
        m_keychain = std::make_unique<KeyChainStore>(
            m_folder->path(), m_folder->filePath(u"keychain.ini"_s));
    }

    void logoutClearsWhatWasTypedOnly()
    {
        for (const auto set : {&LoginModel::setUserName, &LoginModel::setPassword,
                 &LoginModel::setLogin_token, &LoginModel::setSiteCode, &LoginModel::setC_id})
            (m_model.get()->*set)(u"kept"_s);
        m_model->setIsLogin(true);
        m_model->setIsLocal(true);
        m_model->userModel = UserModel();

        m_model->logout();

        const LoginModel restarted(m_defaults.get());
        QCOMPARE(restarted.userName() + restarted.password(), u""_s);
        QVERIFY(!restarted.userName().isNull() && !restarted.password().isNull());
        QCOMPARE(
            restarted.login_token() + restarted.siteCode() + restarted.c_id(), u"keptkeptkept"_s);
        QVERIFY(!restarted.isLogin() && restarted.isLocal() && m_model->userModel);
    }

    void observersHearEveryWrite()
    {
        QList<bool> heard;
        int calls = 0;
        {
            QObject context;
            m_model->observeIsLogin(&context, [&](bool isLogin) {
                QCOMPARE(UserDefaults(file()).boolForKey(u"isLoginForST"_s), isLogin);
                heard << isLogin;
            });
            m_model->setIsLogin(true);
            m_model->setIsLogin(true);
            m_model->logout();
            m_model->observeIsLogin(
                &context, [&calls, count = 0](bool) mutable { calls = ++count; });
            m_model->setIsLogin(false);
            QCOMPARE(heard, (QList {false, true, true, false, false}));
            QCOMPARE(calls, 2);
        }
        m_model->setIsLogin(true);
        QCOMPARE(heard.size(), 5);
    }

    void theIdentifierIsMadeOnce_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("of an earlier version") << "stored"_ba;
        QTest::newRow("an empty item is none") << ""_ba;
        QTest::newRow("none") << QByteArray();
    }

    void theIdentifierIsMadeOnce()
    {
        QFETCH(QByteArray, stored);
        const QString student = u"cn.vant.student"_s;
        bool done = stored.isNull();
        if (!done)
            m_keychain->save(student, stored, [&](bool) { done = true; });
        TRY_VERIFY(done);
        const auto prepared = [&](const QString &key) {
            DeviceIdentifier identifier(m_keychain.get(), key);
            identifier.prepare();
            if (!QTest::qWaitFor([&] { return !identifier.uuid().isNull(); }, patienceMs))
                qFatal("no identifier");
            return identifier.uuid();
        };
        const QString made = prepared(student);
        static const QRegularExpression form(u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s);
        if (stored.isEmpty())
            QVERIFY2(form.match(made).hasMatch(), qPrintable(made));
        else
            QCOMPARE(made, QString::fromUtf8(stored));
        TRY_COMPARE(prepared(student), made);
        QVERIFY(prepared(u"cn.vant.patriarch"_s) != made);
    }

    void convertsValues_data()
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

    void convertsValues()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, text);
        const QJsonObject values
            = object("{\"user_id\": " + json + ", \"user_type\": " + json + "}");
        const auto user = DictionaryMapper::model<UserModel>(values);
        QCOMPARE(user.user_id, text);
        QCOMPARE(user.user_id.isNull(), text.isNull());
        QTEST(user.user_type, "number");
        QTEST(StringFormat::description(values[u"user_id"]), "description");
    }

    void knowsALocalSchool()
    {
        const auto isLocal = [](const QByteArray &json) {
            const auto school
                = DictionaryMapper::model<SchoolModel>(object("{\"is_local\": " + json + "}"));
            return DataModel::fromSchool(school).isLocal;
        };
        for (const char *yes : {"1", R"("1")", "true", R"("true")", R"("True")", R"("YES")"})
            QVERIFY2(isLocal(yes), yes);
        for (const char *no : {"0", R"("0")", "false", "null", R"("no")"})
            QVERIFY2(!isLocal(no), no);
    }

private:
    QString file() const { return m_folder->filePath(u"settings.ini"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<LoginModel> m_model;
    std::unique_ptr<KeyChainStore> m_keychain;
};

QTEST_GUILESS_MAIN(ModelTest)
#include "ModelTest.moc"
