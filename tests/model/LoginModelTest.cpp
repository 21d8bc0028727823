#include "model/LoginModel.h"

#include "model/DeviceIdentifier.h"
#include "support/Patience.h"

#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

struct TextProperty
{
    const char *key;
    QString (LoginModel::*get)() const;
    void (LoginModel::*set)(const QString &);
};

struct BoolProperty
{
    const char *key;
    bool (LoginModel::*get)() const;
    void (LoginModel::*set)(bool);
};

const TextProperty texts[] {
    {"loginTokenForST", &LoginModel::login_token, &LoginModel::setLogin_token},
    {"userNameForST", &LoginModel::userName, &LoginModel::setUserName},
    {"passwordForST", &LoginModel::password, &LoginModel::setPassword},
    {"provincesForST", &LoginModel::provinces, &LoginModel::setProvinces},
    {"cityForST", &LoginModel::city, &LoginModel::setCity},
    {"schoolForST", &LoginModel::school, &LoginModel::setSchool},
    {"siteCodeForST", &LoginModel::siteCode, &LoginModel::setSiteCode},
    {"localUrlForST", &LoginModel::localUrl, &LoginModel::setLocalUrl},
    {"localUrlQeForST", &LoginModel::localUrlQe, &LoginModel::setLocalUrlQe},
    {"cid", &LoginModel::c_id, &LoginModel::setC_id},
    {"localRegid", &LoginModel::localRegid, &LoginModel::setLocalRegid},
    {"terminalCdn", &LoginModel::terminalCDN, &LoginModel::setTerminalCDN},
    {"rbCdn", &LoginModel::rbCDN, &LoginModel::setRbCDN},
    {"baseCdn", &LoginModel::baseCDN, &LoginModel::setBaseCDN},
    {"registerCdn", &LoginModel::registerCDN, &LoginModel::setRegisterCDN},
    {"zzrbCdn", &LoginModel::zzrbCDN, &LoginModel::setZzrbCDN},
    {"qeCdn", &LoginModel::qeCDN, &LoginModel::setQeCDN},
};

const BoolProperty bools[] {
    {"isLoginForST", &LoginModel::isLogin, &LoginModel::setIsLogin},
    {"isLocalForST", &LoginModel::isLocal, &LoginModel::setIsLocal},
    {"isHiddenWechatLogin", &LoginModel::isHiddenWechatLogin, &LoginModel::setIsHiddenWechatLogin},
    {"isLoginOut", &LoginModel::isLoginOut, &LoginModel::setIsLoginOut},
    {"isFirstInstall", &LoginModel::isFirstInstall, &LoginModel::setIsFirstInstall},
    {"isNotBeforeVersion", &LoginModel::isNotBeforeVersion, &LoginModel::setIsNotBeforeVersion},
};

}

//! What is kept of a login, and the identifier of the device that it is made from.
class LoginModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsEachValueUnderItsKey();
    void logoutClearsWhatWasTypedOnly();
    void observersHearEveryWrite();
    void theIdentifierIsMadeOnce_data();
    void theIdentifierIsMadeOnce();
    void tellsThoseWhoWait();

private:
    QString file() const { return m_folder->filePath(u"settings.ini"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<LoginModel> m_model;
    std::unique_ptr<KeyChainStore> m_keychain;
};

void LoginModelTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(file());
    m_model = std::make_unique<LoginModel>(m_defaults.get());
    m_keychain
        = std::make_unique<KeyChainStore>(m_folder->path(), m_folder->filePath(u"keychain.ini"_s));
}

void LoginModelTest::keepsEachValueUnderItsKey()
{
    LoginModel second(m_defaults.get());
    const auto onDisk = [&](const char *key) {
        return QSettings(file(), QSettings::IniFormat).value(QString::fromLatin1(key));
    };
    for (const TextProperty &property : texts) {
        QVERIFY2((second.*property.get)().isNull(), property.key);
        (m_model.get()->*property.set)(u"值 of "_s + QString::fromLatin1(property.key));
        QCOMPARE(onDisk(property.key), u"值 of "_s + QString::fromLatin1(property.key));
    }
    for (const BoolProperty &property : bools) {
        QVERIFY2(!(second.*property.get)(), property.key);
        (m_model.get()->*property.set)(true);
        QVERIFY2(onDisk(property.key).toBool(), property.key);
    }
    QCOMPARE(QSettings(file(), QSettings::IniFormat).allKeys().size(),
        qsizetype(std::size(texts) + std::size(bools)));
    // Nothing was written over by a later one.
    for (const TextProperty &property : texts)
        QCOMPARE((second.*property.get)(), u"值 of "_s + QString::fromLatin1(property.key));
    for (const BoolProperty &property : bools)
        QVERIFY2((second.*property.get)(), property.key);
}

void LoginModelTest::logoutClearsWhatWasTypedOnly()
{
    for (const TextProperty &property : texts)
        (m_model.get()->*property.set)(u"kept"_s);
    for (const BoolProperty &property : bools)
        (m_model.get()->*property.set)(true);
    m_model->userModel = UserModel();

    m_model->logout();

    for (const TextProperty &property : texts) {
        const QByteArray key = property.key;
        const bool typed = key == "userNameForST" || key == "passwordForST";
        QCOMPARE((m_model.get()->*property.get)(), typed ? u""_s : u"kept"_s);
        QVERIFY2(!(m_model.get()->*property.get)().isNull(), property.key);
    }
    for (const BoolProperty &property : bools)
        QCOMPARE((m_model.get()->*property.get)(), QByteArray("isLoginForST") != property.key);
    QVERIFY(m_model->userModel.has_value());
}

void LoginModelTest::observersHearEveryWrite()
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
        m_model->observeIsLogin(&context, [&calls, count = 0](bool) mutable { calls = ++count; });
        m_model->setIsLogin(false);
        QCOMPARE(heard, (QList {false, true, true, false, false}));
        QCOMPARE(calls, 2);
    }
    m_model->setIsLogin(true);
    QCOMPARE(heard.size(), 5);
}

void LoginModelTest::theIdentifierIsMadeOnce_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("of an earlier version") << "stored"_ba;
    QTest::newRow("an empty item is none") << ""_ba;
    QTest::newRow("none") << QByteArray();
}

void LoginModelTest::theIdentifierIsMadeOnce()
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

void LoginModelTest::tellsThoseWhoWait()
{
    DeviceIdentifier identifier(m_keychain.get(), u"cn.vant.student"_s);
    QStringList told;
    const auto note = [&](const QString &uuid) { told << uuid; };
    identifier.whenReady(note);
    // One who asks for more while being told.
    identifier.whenReady([&](const QString &) { identifier.whenReady(note); });
    identifier.prepare();
    QCOMPARE(told, {});
    TRY_COMPARE(told.size(), 2);
    identifier.whenReady(note);
    QCOMPARE(told, QStringList(3, identifier.uuid()));
}

QTEST_GUILESS_MAIN(LoginModelTest)
#include "LoginModelTest.moc"
