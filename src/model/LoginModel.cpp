#include "model/LoginModel.h"

#include "model/SecretSettings.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString isLoginKey = QStringLiteral("isLoginForST");
const QString userNameKey = QStringLiteral("userNameForST");
const QString provincesKey = QStringLiteral("provincesForST");
const QString cityKey = QStringLiteral("cityForST");
const QString schoolKey = QStringLiteral("schoolForST");
const QString siteCodeKey = QStringLiteral("siteCodeForST");
const QString localUrlKey = QStringLiteral("localUrlForST");
const QString localUrlQeKey = QStringLiteral("localUrlQeForST");
const QString localRegidKey = QStringLiteral("localRegid");
const QString c_idKey = QStringLiteral("cid");
const QString terminalCDNKey = QStringLiteral("terminalCdn");
const QString rbCDNKey = QStringLiteral("rbCdn");
const QString baseCDNKey = QStringLiteral("baseCdn");
const QString registerCDNKey = QStringLiteral("registerCdn");
const QString zzrbCDNKey = QStringLiteral("zzrbCdn");
const QString qeCDNKey = QStringLiteral("qeCdn");
const QString isLocalKey = QStringLiteral("isLocalForST");
const QString isHiddenWechatLoginKey = QStringLiteral("isHiddenWechatLogin");
const QString isLoginOutKey = QStringLiteral("isLoginOut");
const QString isFirstInstallKey = QStringLiteral("isFirstInstall");
const QString isNotBeforeVersionKey = QStringLiteral("isNotBeforeVersion");

}

LoginModel::LoginModel(UserDefaults *defaults)
    : m_defaults(defaults)
{
}

void LoginModel::store(const QString &key, const QString &value)
{
    m_defaults->setObject(value, key);
    m_defaults->synchronize();
}

void LoginModel::store(const QString &key, bool value)
{
    m_defaults->setBool(value, key);
    m_defaults->synchronize();
}

bool LoginModel::isLogin() const
{
    return m_defaults->boolForKey(isLoginKey);
}

void LoginModel::setIsLogin(bool value)
{
    store(isLoginKey, value);
    Q_EMIT isLoginWritten(value);
}

void LoginModel::observeIsLogin(QObject *context, std::function<void(bool)> observer)
{
    // Shared: an observer that remembers must find the first call's memory in the later ones.
    const auto shared = std::make_shared<std::function<void(bool)>>(std::move(observer));
    connect(this, &LoginModel::isLoginWritten, context, [shared](bool value) { (*shared)(value); });
    (*shared)(isLogin());
}

void LoginModel::logout()
{
    setIsLogin(false);
    setUserName(u""_s);
    setPassword(u""_s);
}

QString LoginModel::login_token() const
{
    return m_defaults->stringForKey(SecretSettings::loginToken);
}

bool LoginModel::isTokenAwaited() const
{
    return m_defaults->isAwaited(SecretSettings::loginToken);
}

void LoginModel::whenTokenIsReadable(std::function<void()> readable)
{
    m_defaults->whenReadable(std::move(readable));
}

void LoginModel::setLogin_token(const QString &value)
{
    store(SecretSettings::loginToken, value);
}

QString LoginModel::userName() const
{
    return m_defaults->stringForKey(userNameKey);
}

void LoginModel::setUserName(const QString &value)
{
    store(userNameKey, value);
}

QString LoginModel::password() const
{
    return m_defaults->stringForKey(SecretSettings::password);
}

void LoginModel::setPassword(const QString &value)
{
    store(SecretSettings::password, value);
}

QString LoginModel::provinces() const
{
    return m_defaults->stringForKey(provincesKey);
}

void LoginModel::setProvinces(const QString &value)
{
    store(provincesKey, value);
}

QString LoginModel::city() const
{
    return m_defaults->stringForKey(cityKey);
}

void LoginModel::setCity(const QString &value)
{
    store(cityKey, value);
}

QString LoginModel::school() const
{
    return m_defaults->stringForKey(schoolKey);
}

void LoginModel::setSchool(const QString &value)
{
    store(schoolKey, value);
}

QString LoginModel::siteCode() const
{
    return m_defaults->stringForKey(siteCodeKey);
}

void LoginModel::setSiteCode(const QString &value)
{
    store(siteCodeKey, value);
}

QString LoginModel::localUrl() const
{
    return m_defaults->stringForKey(localUrlKey);
}

void LoginModel::setLocalUrl(const QString &value)
{
    store(localUrlKey, value);
}

QString LoginModel::localUrlQe() const
{
    return m_defaults->stringForKey(localUrlQeKey);
}

void LoginModel::setLocalUrlQe(const QString &value)
{
    store(localUrlQeKey, value);
}

QString LoginModel::localRegid() const
{
    return m_defaults->stringForKey(localRegidKey);
}

void LoginModel::setLocalRegid(const QString &value)
{
    store(localRegidKey, value);
}

QString LoginModel::c_id() const
{
    return m_defaults->stringForKey(c_idKey);
}

void LoginModel::setC_id(const QString &value)
{
    store(c_idKey, value);
}

QString LoginModel::terminalCDN() const
{
    return m_defaults->stringForKey(terminalCDNKey);
}

void LoginModel::setTerminalCDN(const QString &value)
{
    store(terminalCDNKey, value);
}

QString LoginModel::rbCDN() const
{
    return m_defaults->stringForKey(rbCDNKey);
}

void LoginModel::setRbCDN(const QString &value)
{
    store(rbCDNKey, value);
}

QString LoginModel::baseCDN() const
{
    return m_defaults->stringForKey(baseCDNKey);
}

void LoginModel::setBaseCDN(const QString &value)
{
    store(baseCDNKey, value);
}

QString LoginModel::registerCDN() const
{
    return m_defaults->stringForKey(registerCDNKey);
}

void LoginModel::setRegisterCDN(const QString &value)
{
    store(registerCDNKey, value);
}

QString LoginModel::zzrbCDN() const
{
    return m_defaults->stringForKey(zzrbCDNKey);
}

void LoginModel::setZzrbCDN(const QString &value)
{
    store(zzrbCDNKey, value);
}

QString LoginModel::qeCDN() const
{
    return m_defaults->stringForKey(qeCDNKey);
}

void LoginModel::setQeCDN(const QString &value)
{
    store(qeCDNKey, value);
}

bool LoginModel::isLocal() const
{
    return m_defaults->boolForKey(isLocalKey);
}

void LoginModel::setIsLocal(bool value)
{
    store(isLocalKey, value);
}

bool LoginModel::isHiddenWechatLogin() const
{
    return m_defaults->boolForKey(isHiddenWechatLoginKey);
}

void LoginModel::setIsHiddenWechatLogin(bool value)
{
    store(isHiddenWechatLoginKey, value);
}

bool LoginModel::isLoginOut() const
{
    return m_defaults->boolForKey(isLoginOutKey);
}

void LoginModel::setIsLoginOut(bool value)
{
    store(isLoginOutKey, value);
}

bool LoginModel::isFirstInstall() const
{
    return m_defaults->boolForKey(isFirstInstallKey);
}

void LoginModel::setIsFirstInstall(bool value)
{
    store(isFirstInstallKey, value);
}

bool LoginModel::isNotBeforeVersion() const
{
    return m_defaults->boolForKey(isNotBeforeVersionKey);
}

void LoginModel::setIsNotBeforeVersion(bool value)
{
    store(isNotBeforeVersionKey, value);
}
