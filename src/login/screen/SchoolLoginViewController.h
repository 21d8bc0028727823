#pragma once

#include "login/form/LoginFormViewController.h"

#include <QPointer>

class AuthLoginViewController;
struct AskedSchool;

//! What both login screens have: the chosen school, the WeChat login, and a message that waits for
//! the launch advertisement. One for the process, made by the application.
class SchoolLoginViewController : public LoginFormViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the login screens' controllers.")
    Q_PROPERTY(QString schoolText READ schoolText NOTIFY schoolChanged)
    Q_PROPERTY(bool schoolChosen READ isSchoolChosen NOTIFY schoolChanged)
    Q_PROPERTY(bool wechatLoginHidden READ isWechatLoginHidden NOTIFY schoolChanged)

public:
    ~SchoolLoginViewController() override;

    //! The name of its view.
    virtual QString screenName() const = 0;

    bool prefersNavigationBarHidden() const override { return true; }
    void viewDidLoad() override;

    //! A text to show once as an error: at once, or when the launch advertisement has gone.
    void setMessage(const QString &message);
    QString message() const { return m_message; }

    QString siteCode() const { return m_siteCode; }
    QString schoolText() const;
    bool isSchoolChosen() const { return !m_school.isEmpty(); }
    bool isWechatLoginHidden() const { return m_wechatLoginHidden; }

    //! Opens the binding screen for a WeChat identity that no account is bound to, once at a time.
    void jumpToAuthVC(const QJsonObject &identity);

    // The screen's touches.
    Q_INVOKABLE void wechatLogin();

Q_SIGNALS:
    void schoolChanged();

protected:
    explicit SchoolLoginViewController(const LoginEnvironment &environment);

    //! Fills the screen from what the last login has left.
    virtual void configLoginInfo();
    //! The school from now on; both empty for none.
    void setChosenSchool(const QString &name, const QString &siteCode);
    //! Goes back to the school that a WeChat login was asked for.
    virtual void takeUp(const AskedSchool &school);
    void setWechatLoginHidden(bool hidden);
    void loginCompleted() override;

private:
    void xhLaunchAdShowFinish();
    void wechatAuthCodeCallback(const QVariant &object);
    AskedSchool chosenSchool();
    bool isShown() const;
    QString missingBeforeAccount() const override;
    void useSchool() override;

    QPointer<AuthLoginViewController> m_binding;
    QString m_message;
    QString m_siteCode;
    QString m_school;
    bool m_wechatLoginHidden = false;
};
