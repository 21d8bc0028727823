#pragma once

#include "login/form/LoginFormViewController.h"

//! The binding screen: one sign-in with account and password, which binds the account to the
//! WeChat identity that it was opened with. Presented over the login screen and owned by the
//! navigator from then on; it dismisses itself as soon as somebody is signed in.
class AuthLoginViewController : public LoginFormViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Controllers are made in C++.")

public:
    //! \a params: the identity, as the platform gave it. \a region: what the login screen shows.
    AuthLoginViewController(
        const LoginEnvironment &environment, const QJsonObject &params, const ChosenRegion &region);

    //! Opens a binding screen in a navigation controller over what is shown.
    static AuthLoginViewController *present(
        const LoginEnvironment &environment, const QJsonObject &params, const ChosenRegion &region);

    void viewDidLoad() override;

    // Handed over from the login screen, and stored by a login, empty ones too.
    const QString school;
    const QString city;
    const QString provinces;

private:
    void loginCompleted() override;
};
