#pragma once

#include <QStringList>

//! The settings that open a session or hold a password: sealed where they rest, whichever room
//! writes them.
namespace SecretSettings {

inline const QString loginToken = QStringLiteral("loginTokenForST");
inline const QString password = QStringLiteral("passwordForST");
//! The session cookies, for the next start.
inline const QString savedCookies = QStringLiteral("vantCookies");
//! What the last answer with cookies has said of them.
inline const QString receivedCookie = QStringLiteral("MiPushUsingCookie");

}

inline const QStringList secretSettings {SecretSettings::loginToken, SecretSettings::password,
    SecretSettings::savedCookies, SecretSettings::receivedCookie};
