#pragma once

#include "model/SiteModel.h"
#include "model/SsoModel.h"
#include "model/UserModel.h"
#include "platform/storage/UserDefaults.h"

#include <QObject>

#include <functional>
#include <optional>

//! Who is signed in, and the settings that come with it. One for the process, made by the
//! application.
//!
//! Nothing persistent is held in memory: each getter reads the settings and each setter writes them
//! through at once, so that a kill at any moment leaves the old or the new value; a secret may have
//! to wait for its key, see UserDefaults. A missing string reads as null, a missing bool false.
class LoginModel : public QObject
{
    Q_OBJECT

public:
    explicit LoginModel(UserDefaults *defaults);

    bool isLogin() const;
    void setIsLogin(bool value);
    //! Calls the observer with the current value at once, and then on every write, of an equal
    //! value too.
    void observeIsLogin(QObject *context, std::function<void(bool isLogin)> observer);

    //! Null as long as isTokenAwaited().
    QString login_token() const;
    //! A token is stored, but the keychain has not answered yet how to read it.
    bool isTokenAwaited() const;
    //! Calls back once when no token is awaited, at once when none is.
    void whenTokenIsReadable(std::function<void()> readable);
    void setLogin_token(const QString &value);
    QString userName() const;
    void setUserName(const QString &value);
    QString password() const;
    void setPassword(const QString &value);
    QString provinces() const;
    void setProvinces(const QString &value);
    QString city() const;
    void setCity(const QString &value);
    QString school() const;
    void setSchool(const QString &value);
    QString siteCode() const;
    void setSiteCode(const QString &value);

    bool isLocal() const;
    void setIsLocal(bool value);
    QString localUrl() const;
    void setLocalUrl(const QString &value);
    QString localUrlQe() const;
    void setLocalUrlQe(const QString &value);

    bool isHiddenWechatLogin() const;
    void setIsHiddenWechatLogin(bool value);
    QString localRegid() const;
    void setLocalRegid(const QString &value);
    QString c_id() const;
    void setC_id(const QString &value);

    QString terminalCDN() const;
    void setTerminalCDN(const QString &value);
    QString rbCDN() const;
    void setRbCDN(const QString &value);
    QString baseCDN() const;
    void setBaseCDN(const QString &value);
    QString registerCDN() const;
    void setRegisterCDN(const QString &value);
    QString zzrbCDN() const;
    void setZzrbCDN(const QString &value);
    QString qeCDN() const;
    void setQeCDN(const QString &value);

    bool isLoginOut() const;
    void setIsLoginOut(bool value);
    bool isFirstInstall() const;
    void setIsFirstInstall(bool value);
    bool isNotBeforeVersion() const;
    void setIsNotBeforeVersion(bool value);

    //! Signs out: isLogin false, account and password empty. Token, site and addresses stay.
    void logout();

    //! Memory only: empty after a restart until the next login.
    int messageCount = 0;
    int user_type = 0;
    std::optional<UserModel> userModel;
    std::optional<SsoModel> ssoinfo;
    std::optional<SiteModel> siteInfo;
    QString redirect_url;

Q_SIGNALS:
    void isLoginWritten(bool isLogin);

private:
    void store(const QString &key, const QString &value);
    void store(const QString &key, bool value);

    UserDefaults *m_defaults;
};
