#pragma once

#include "login/school/SchoolLogo.h"
#include "login/screen/SchoolLoginViewController.h"

class ChooseSchoolViewController;
struct DataModel;

//! The login screen: the school is chosen from a list of its own and shown with its logo.
class LoginViewController2 : public SchoolLoginViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")
    Q_PROPERTY(QUrl logo READ logo NOTIFY logoChanged)

public:
    explicit LoginViewController2(const LoginEnvironment &environment);
    ~LoginViewController2() override;

    QString screenName() const override { return QStringLiteral("LoginScreen"); }
    void viewDidLoad() override;
    void viewDidAppear() override;

    QUrl logo() const { return m_logo.source(); }

    // The screen's touches.
    Q_INVOKABLE void chooseSchool();
    Q_INVOKABLE void forgetPwd();

Q_SIGNALS:
    void logoChanged();

private:
    void configLoginInfo() override;
    void didChooseSchool(const DataModel &row);
    void takeUp(const AskedSchool &school) override;
    void loginCompleted() override;

    SchoolLogo m_logo;
    QPointer<ChooseSchoolViewController> m_chooser;
};
