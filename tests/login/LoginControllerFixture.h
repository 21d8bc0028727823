#pragma once

#include "login/ChooseSchoolViewController.h"
#include "login/LoginHarness.h"
#include "login/LoginViewController2.h"

#include <memory>

//! A login screen's controller over a school platform of the test's own; what the tests of the
//! controller begin with.
class LoginControllerFixture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    void start();
    void fill(const QString &account, const QString &password);
    ChooseSchoolViewController *chooser();

    std::unique_ptr<SandboxProcess> m_sandbox;
    std::unique_ptr<LoginHarness> m_harness;
    std::unique_ptr<LoginViewController2> m_login;
};
