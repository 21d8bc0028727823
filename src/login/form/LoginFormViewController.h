#pragma once

#include "login/form/LoginEnvironment.h"
#include "login/form/LoginViewModel.h"
#include "ui/feedback/ProgressWork.h"
#include "ui/navigation/ViewController.h"

//! What every login screen has: account and password, the agreements with their box and links, and
//! the login button with its checks. It never opens the home screen: that follows from the stored
//! login.
class LoginFormViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The base of the login screens' controllers.")
    Q_PROPERTY(QString account READ account WRITE setAccount NOTIFY fieldsChanged)
    Q_PROPERTY(QString password READ password WRITE setPassword NOTIFY fieldsChanged)
    Q_PROPERTY(bool userInstructionsSelected READ isUserInstructionsSelected NOTIFY
            userInstructionsChanged)
    Q_PROPERTY(QString connectionWarning READ connectionWarning NOTIFY connectionChanged)

public:
    bool isPatriarch() const { return m_environment.isPatriarch; }
    QString account() const { return m_loginViewModel.userCode(); }
    void setAccount(const QString &account);
    QString password() const { return m_loginViewModel.userPassword(); }
    void setPassword(const QString &password);
    bool isUserInstructionsSelected() const { return m_userInstructionsSelected; }
    //! What to know before the password goes to the chosen school's server; empty: nothing.
    QString connectionWarning() const;

    // The screen's touches.
    Q_INVOKABLE void checkUserInstructions();
    //! The link's name: "protocol" or "privacy".
    Q_INVOKABLE void didSelectLink(const QString &name);
    //! One login at a time. A failure is told half a second later.
    Q_INVOKABLE void login();

Q_SIGNALS:
    void fieldsChanged();
    void userInstructionsChanged();
    void connectionChanged();
    //! The keyboard shall go.
    void endEditing();

    //! The page of an agreement is to be opened over this screen.
    void openOutLinkPage(const QString &urlStr, const QString &titleStr);

protected:
    explicit LoginFormViewController(const LoginEnvironment &environment);

    const LoginEnvironment &environment() const { return m_environment; }
    LoginViewModel &loginViewModel() { return m_loginViewModel; }
    LoginViewModel::PatriarchLogin patriarchLogin() const;
    void setUserInstructionsSelected(bool selected);
    //! A null text says nothing.
    void showError(const QString &text);
    //! Whether the agreements are; says so if they are not.
    bool checkAgreed();

    //! Another server is to be signed in to.
    void serverChanged();

    //! A login runs behind the progress indicator, one at a time.
    void beginLogin();
    void endLogin() { m_runningLogin.end(); }
    bool isLoginRunning() const { return m_runningLogin.isRunning(); }

    //! What the screen asks for before it asks for an account: the text to show where that is
    //! missing, empty where nothing is.
    virtual QString missingBeforeAccount() const { return {}; }
    //! Nothing of that is missing: the request layer turns to the chosen school.
    virtual void useSchool() { }
    //! The part of an account or a password that the check for an empty one looks at.
    virtual QString tested(const QString &typed) const { return typed; }
    //! The login is stored; the fields still stand as typed.
    virtual void loginCompleted() = 0;

private:
    void showAgreement(const QString &title, const QJsonValue &answer);

    LoginEnvironment m_environment;
    LoginViewModel m_loginViewModel;
    ProgressWork m_runningLogin;
    bool m_userInstructionsSelected = false;
    bool m_agreementRequested = false;
};
