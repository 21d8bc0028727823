#pragma once

#include "login/form/CommandObserver.h"
#include "login/form/LoginEnvironment.h"
#include "net/request/ResponseCallback.h"
#include "session/UserCheck.h"
#include "session/UserSession.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <optional>

//! The login logic behind a login screen: commands that call the platform and store a successful
//! login. Owned by its screen's controller; a command whose view model dies tells nobody.
class LoginViewModel : public QObject
{
    Q_OBJECT

public:
    enum class PatriarchLogin { No, Yes };

    explicit LoginViewModel(const LoginEnvironment &environment, QObject *parent = nullptr);

    // A login that is overtaken by another, or by a sign-out, ends in an error without a text.

    //! Signs in with userCode and userPassword, and binds the account to the WeChat identity of
    //! authParams where that is set. Completed: everything is stored and isLogin is set.
    void loginCommand(PatriarchLogin patriarch, CommandObserver observer);
    //! The same for a WeChat identity alone.
    void bindWechatCommand(CommandObserver observer);
    //! Signs in with authCode. A value: the WeChat identity, which no account is bound to yet.
    //! Nothing is stored then.
    void wechatLoginCommand(PatriarchLogin patriarch, CommandObserver observer);
    //! A value: the list of sites that match, kept in `sites` too; an empty one is followed by an
    //! error.
    void requestSiteCommand(const QString &searchkey, CommandObserver observer);
    //! A value: the site's settings; "h5_logo" is the address of its logo.
    void logoCommand(const QString &site_id, CommandObserver observer);
    //! A value: "url" of the page.
    void requestAgreementUser(CommandObserver observer);
    void requestAgreementPrivacy(CommandObserver observer);

    QString userCode() const { return m_userCode; }
    void setUserCode(const QString &userCode);
    QString userPassword() const { return m_userPassword; }
    void setUserPassword(const QString &userPassword);
    //! The chosen site's code, for every request from now on.
    void setOrganization(const QString &organization);
    //! Account, password and site are all there.
    bool isLoginEnabled() const;

    QJsonArray sites;
    QString city;
    QString provinces;
    QString school;
    QString authCode;
    //! The identity of a WeChat user whom no account is bound to: nick, sign, open_id, union_id,
    //! timestamp.
    std::optional<QJsonObject> authParams;

Q_SIGNALS:
    //! With every change of account, password or site.
    void loginEnableSignal(bool enabled);

private:
    enum class PushWait { No, Yes };

    void login(UserCheck check, PushWait wait, CommandObserver observer);
    void handleLoginAnswer(const UserSession::Attempt &attempt, const QJsonValue &data,
        UserCheck check, PushWait wait, const CommandObserver &observer);
    void refuse(const UserSession::Attempt &attempt, const CommandError &error,
        const CommandObserver &observer);
    void bindGeTui(PushWait wait);
    ResponseCallback forward(CommandObserver observer);

    LoginEnvironment m_environment;
    QString m_userCode;
    QString m_userPassword;
};
