#pragma once

#include "login/enabling/EnablingStepViewController.h"
#include "login/enabling/VerifiedAccount.h"

//! The second step of enabling an account: its holder chooses the login name and the password.
class STSetingAccountViewController : public EnablingStepViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QString greeting READ greeting CONSTANT)
    Q_PROPERTY(QString userNo READ userNo CONSTANT)
    Q_PROPERTY(QString account READ account WRITE setAccount NOTIFY fieldsChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY fieldsChanged)
    Q_PROPERTY(
        QString confirmPassword READ confirmPassword WRITE setConfirmPassword NOTIFY fieldsChanged)
    Q_PROPERTY(bool setingEnabled READ isSetingEnabled NOTIFY fieldsChanged)

public:
    //! \a holder: as the first step has found them.
    STSetingAccountViewController(
        const LoginEnvironment &environment, const VerifiedAccount &holder);

    QString userId() const { return m_holder.user_id; }
    QString userNo() const { return m_holder.user_no; }
    int userType() const { return m_holder.user_type; }
    QString userName() const { return m_holder.user_name; }
    QString greeting() const;

    QString account() const { return m_account; }
    void setAccount(const QString &account);
    QString password() const { return m_password; }
    void setPassword(const QString &password);
    QString confirmPassword() const { return m_confirmPassword; }
    void setConfirmPassword(const QString &confirmPassword);
    bool isSetingEnabled() const;

    //! Sends the choice, and goes back to the login screen.
    Q_INVOKABLE void seting();

Q_SIGNALS:
    void fieldsChanged();

private:
    void write(QString &field, const QString &text);

    VerifiedAccount m_holder;
    QString m_account;
    QString m_password;
    QString m_confirmPassword;
};
