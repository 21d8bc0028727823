#include "model/LoginModel.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

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

class LoginModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesEachValueThroughUnderItsKey();
    void readsWhatOthersWrote();
    void aFreshInstallHasNothing();
    void nilRemovesAValue();
    void logoutClearsWhatWasTypedOnly();
    void anObserverHearsTheCurrentValueAtOnce();
    void observersHearEqualValuesToo();
    void eachObservationAddsOne();
    void anObserverKeepsItsMemory();

private:
    QString file() const { return m_folder->filePath(u"settings.ini"_s); }
    //! What another program finds in the file at this moment.
    QVariant onDisk(const char *key) const
    {
        return QSettings(file(), QSettings::IniFormat).value(QString::fromLatin1(key));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<LoginModel> m_model;
};

void LoginModelTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(file());
    m_model = std::make_unique<LoginModel>(m_defaults.get());
}

void LoginModelTest::writesEachValueThroughUnderItsKey()
{
    for (const TextProperty &property : texts) {
        (m_model.get()->*property.set)(u"值 of "_s + QString::fromLatin1(property.key));
        QCOMPARE(onDisk(property.key), u"值 of "_s + QString::fromLatin1(property.key));
    }
    for (const BoolProperty &property : bools) {
        (m_model.get()->*property.set)(true);
        QCOMPARE(onDisk(property.key).toBool(), true);
    }
    QCOMPARE(QSettings(file(), QSettings::IniFormat).allKeys().size(),
        qsizetype(std::size(texts) + std::size(bools)));
    // Nothing was written over by a later one.
    const LoginModel second(m_defaults.get());
    for (const TextProperty &property : texts)
        QCOMPARE((second.*property.get)(), u"值 of "_s + QString::fromLatin1(property.key));
    for (const BoolProperty &property : bools)
        QVERIFY2((second.*property.get)(), property.key);
}

void LoginModelTest::readsWhatOthersWrote()
{
    LoginModel second(m_defaults.get());
    for (const TextProperty &property : texts) {
        QVERIFY2((m_model.get()->*property.get)().isNull(), property.key);
        (second.*property.set)(u"x"_s);
        QCOMPARE((m_model.get()->*property.get)(), u"x"_s);
    }
    for (const BoolProperty &property : bools) {
        (second.*property.set)(true);
        QVERIFY2((m_model.get()->*property.get)(), property.key);
        (second.*property.set)(false);
        QVERIFY2(!(m_model.get()->*property.get)(), property.key);
    }
}

void LoginModelTest::aFreshInstallHasNothing()
{
    for (const TextProperty &property : texts)
        QVERIFY2((m_model.get()->*property.get)().isNull(), property.key);
    for (const BoolProperty &property : bools)
        QVERIFY2(!(m_model.get()->*property.get)(), property.key);
    QCOMPARE(m_model->user_type, 0);
    QVERIFY(!m_model->userModel && !m_model->ssoinfo && !m_model->siteInfo);
}

void LoginModelTest::nilRemovesAValue()
{
    m_model->setQeCDN(u"https://qe/"_s);
    m_model->setQeCDN(QString());
    QVERIFY(m_model->qeCDN().isNull());
    m_model->setQeCDN(u""_s);
    QVERIFY(!m_model->qeCDN().isNull());
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
        const QString value = (m_model.get()->*property.get)();
        QCOMPARE(value, typed ? u""_s : u"kept"_s);
        QVERIFY2(!value.isNull(), property.key);
    }
    for (const BoolProperty &property : bools)
        QCOMPARE((m_model.get()->*property.get)(), QByteArray("isLoginForST") != property.key);
    QVERIFY(m_model->userModel.has_value());
}

void LoginModelTest::anObserverHearsTheCurrentValueAtOnce()
{
    for (const bool value : {true, false}) {
        m_model->setIsLogin(value);
        QList<bool> heard;
        QObject context;
        m_model->observeIsLogin(&context, [&](bool isLogin) { heard << isLogin; });
        QCOMPARE(heard, QList {value});
    }
}

void LoginModelTest::observersHearEqualValuesToo()
{
    QList<bool> heard;
    {
        QObject context;
        m_model->observeIsLogin(&context, [&](bool isLogin) {
            QCOMPARE(onDisk("isLoginForST").toBool(), isLogin);
            heard << isLogin;
        });
        m_model->setIsLogin(true);
        m_model->setIsLogin(true);
        m_model->logout();
        m_model->setIsLogin(false);
        QCOMPARE(heard, (QList {false, true, true, false, false}));
    }
    m_model->setIsLogin(true);
    QCOMPARE(heard.size(), 5);
}

void LoginModelTest::eachObservationAddsOne()
{
    int heard = 0;
    const auto observer = [&](bool) { ++heard; };
    m_model->observeIsLogin(this, observer);
    m_model->observeIsLogin(this, observer);
    m_model->observeIsLogin(this, observer);
    heard = 0;
    m_model->setIsLogin(true);
    QCOMPARE(heard, 3);
}

void LoginModelTest::anObserverKeepsItsMemory()
{
    QList<int> calls;
    m_model->observeIsLogin(this, [&calls, count = 0](bool) mutable { calls << ++count; });
    m_model->setIsLogin(true);
    QCOMPARE(calls, (QList {1, 2}));
}

QTEST_GUILESS_MAIN(LoginModelTest)
#include "LoginModelTest.moc"
