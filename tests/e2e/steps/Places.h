#pragma once

#include "e2e/driver/Driver.h"
#include "e2e/steps/Texts.h"

#include <QJsonObject>

//! What several chapters do on the login screen and on the way back to it.
namespace SignIn {

//! Waits for the login screen, with this in the school row.
void seeLoginScreen(Driver &driver, const QString &school = Pupil::school);
//! Checks the agreement's box, if it is not.
void acceptAgreement(Driver &driver);
//! Reads what the screen's links lead to, and comes back.
void readAgreements(Driver &driver);
//! Fills the form by touch and presses the button.
void tryWith(Driver &driver, const QString &password);
//! Waits until the portal's first page greets the pupil.
void seePortal(Driver &driver, const QString &userName = Pupil::userName);

}

//! WeChat's authorisation page, as the browser would show it.
namespace WeChatPage {

inline const QString agree = QStringLiteral("btn-agree"); //!< an identity with an account
inline const QString agreeAsNewcomer = QStringLiteral("btn-agree-new"); //!< one without
inline const QString refuse = QStringLiteral("btn-refuse");

//! Has the login screen ask for it, with the agreement accepted.
QUrl ask(Driver &driver);
//! Presses a button of the page; its callback starts the client.
void press(Driver &driver, const QUrl &page, const QString &button);

}

//! The portal's page with a button for every handler of the bridge.
namespace BridgePage {

//! The step that leads there.
inline const QString step = QStringLiteral("bridge-page");

//! From the portal.
void open(Driver &driver);
//! Waits until the page is there and stands on top.
void see(Driver &driver);
//! From a page that was opened here.
void comeBack(Driver &driver);
void press(Driver &driver, const QString &handler);
//! Waits until the page shows this of the handler's answer or the function's call.
void seeOutput(Driver &driver, const QString &name, const QString &text);
//! Presses, and takes the answer's "result", which must be of the type.
QJsonValue answerTo(Driver &driver, const QString &handler, const QString &type);

}
