#pragma once

#include "login/LoginFormViewController.h"
#include "login/SchoolLogo.h"

#include <QPointer>

class AuthLoginViewController;
class ChooseSchoolViewController;
struct DataModel;

//! The login screen: school, account and password, the agreements, and the WeChat login. One for
//! the process, made by the application.
class LoginViewController2 : public LoginFormViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QUrl logo READ logo NOTIFY logoChanged)
    Q_PROPERTY(QString schoolText READ schoolText NOTIFY schoolChanged)
    Q_PROPERTY(bool schoolChosen READ isSchoolChosen NOTIFY schoolChanged)
    Q_PROPERTY(bool wechatLoginHidden READ isWechatLoginHidden NOTIFY schoolChanged)

public:
    explicit LoginViewController2(const LoginEnvironment &environment);
    ~LoginViewController2() override;

    bool prefersNavigationBarHidden() const override { return true; }
    void viewDidLoad() override;
    void viewDidAppear() override;

    //! A text to show once as an error: at once, or when the launch advertisement has gone.
    void setMessage(const QString &message);
    QString message() const { return m_message; }

    QString siteCode() const { return m_siteCode; }

    QUrl logo() const { return m_logo.source(); }
    QString schoolText() const;
    bool isSchoolChosen() const { return !m_school.isEmpty(); }
    bool isWechatLoginHidden() const { return m_wechatLoginHidden; }

    //! Opens the binding screen for a WeChat identity that no account is bound to, once at a time.
    void jumpToAuthVC(const QJsonObject &identity);

    // The screen's touches.
    Q_INVOKABLE void chooseSchool();
    Q_INVOKABLE void forgetPwd();
    Q_INVOKABLE void wechatLogin();

Q_SIGNALS:
    void logoChanged();
    void schoolChanged();

private:
    void configLoginInfo();
    void didChooseSchool(const DataModel &row);
    void xhLaunchAdShowFinish();
    void wechatAuthCodeCallback(const QVariant &object);
    QString missingBeforeAccount() override;
    void loginCompleted() override;

    SchoolLogo m_logo;
    QPointer<ChooseSchoolViewController> m_chooser;
    QPointer<AuthLoginViewController> m_binding;
    QString m_message;
    QString m_siteCode;
    QString m_school;
    bool m_wechatLoginHidden = false;
};
