#pragma once

#include "login/LoginEnvironment.h"
#include "login/LoginViewModel.h"
#include "login/SchoolLogo.h"
#include "ui/ViewController.h"

#include <QPointer>

class ChooseSchoolViewController;
struct DataModel;

//! The login screen: school, account and password, the agreements, and the WeChat login. One for
//! the process, made by the application. It never opens the home screen itself: that follows from
//! the stored login.
class LoginViewController2 : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QUrl logo READ logo NOTIFY logoChanged)
    Q_PROPERTY(QString schoolText READ schoolText NOTIFY schoolChanged)
    Q_PROPERTY(bool schoolChosen READ isSchoolChosen NOTIFY schoolChanged)
    Q_PROPERTY(bool wechatLoginHidden READ isWechatLoginHidden NOTIFY schoolChanged)
    Q_PROPERTY(QString account READ account WRITE setAccount NOTIFY fieldsChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY fieldsChanged)
    Q_PROPERTY(bool userInstructionsSelected READ isUserInstructionsSelected NOTIFY
            userInstructionsChanged)

public:
    explicit LoginViewController2(const LoginEnvironment &environment);
    ~LoginViewController2() override;

    bool prefersNavigationBarHidden() const override { return true; }
    void viewDidLoad() override;
    void viewDidAppear() override;

    //! A text to show once as an error: at once, or when the launch advertisement has gone.
    void setMessage(const QString &message);
    QString message() const { return m_message; }

    bool isPatriarch() const { return m_environment.isPatriarch; }
    QString siteCode() const { return m_siteCode; }

    QUrl logo() const { return m_logo.source(); }
    QString schoolText() const;
    bool isSchoolChosen() const { return !m_school.isEmpty(); }
    bool isWechatLoginHidden() const { return m_wechatLoginHidden; }
    QString account() const { return m_loginViewModel.userCode(); }
    void setAccount(const QString &account);
    QString password() const { return m_loginViewModel.userPassword(); }
    void setPassword(const QString &password);
    bool isUserInstructionsSelected() const { return m_userInstructionsSelected; }

    // The screen's touches.
    Q_INVOKABLE void chooseSchool();
    Q_INVOKABLE void checkUserInstructions();
    //! The link's name: "protocol" or "privacy".
    Q_INVOKABLE void didSelectLink(const QString &name);
    Q_INVOKABLE void login();
    Q_INVOKABLE void forgetPwd();
    Q_INVOKABLE void wechatLogin();

Q_SIGNALS:
    void logoChanged();
    void schoolChanged();
    void fieldsChanged();
    void userInstructionsChanged();
    //! The keyboard shall go.
    void endEditing();

    //! The page of an agreement is to be opened over this screen.
    void openOutLinkPage(const QString &urlStr, const QString &titleStr);
    //! A WeChat identity that no account is bound to: the binding screen is to be opened over this
    //! screen.
    void jumpToAuthVC(const QJsonObject &params, const QString &school);

private:
    void configLoginInfo();
    void didChooseSchool(const DataModel &row);
    void setUserInstructionsSelected(bool selected);
    void xhLaunchAdShowFinish();
    void wechatAuthCodeCallback(const QVariant &object);
    void loginFailed(const CommandError &error);
    void loginCompleted();
    void showAgreement(const QString &title, const QJsonValue &answer);
    LoginViewModel::PatriarchLogin patriarchLogin() const;

    LoginEnvironment m_environment;
    LoginViewModel m_loginViewModel;
    SchoolLogo m_logo;
    QPointer<ChooseSchoolViewController> m_chooser;
    QString m_message;
    QString m_siteCode;
    QString m_school;
    bool m_wechatLoginHidden = false;
    bool m_userInstructionsSelected = false;
    bool m_loginRunning = false;
    bool m_agreementRequested = false;
};
