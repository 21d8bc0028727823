#pragma once

#include <QString>

class Driver;
class QUrl;

//! WeChat's authorisation page, as the browser would show it.
namespace WeChatPage {

inline const QString agree = QStringLiteral("btn-agree"); //!< an identity with an account
inline const QString agreeAsNewcomer = QStringLiteral("btn-agree-new"); //!< one without
inline const QString refuse = QStringLiteral("btn-refuse");

//! Presses a button of the page; its callback starts the client.
void press(Driver &driver, const QUrl &page, const QString &button);

}
