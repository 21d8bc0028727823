#pragma once

#include <QString>

class Driver;

//! What several steps do on the login screen and on the way back to it.
namespace SignIn {

//! Waits for the login screen, with this in the school row.
void seeLoginScreen(Driver &driver, const QString &school);
//! Checks the agreement's box, if it is not.
void acceptAgreement(Driver &driver);
//! Fills the form by touch and presses the button.
void tryWith(Driver &driver, const QString &userCode, const QString &password);
//! Waits until the portal's first page greets the pupil.
void seePortal(Driver &driver);

}
