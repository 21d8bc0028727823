#pragma once

#include <QStringList>

//! The settings that open a session or hold a password: sealed where they rest, whichever room
//! writes them.
inline const QStringList secretSettings {QStringLiteral("loginTokenForST"),
    QStringLiteral("passwordForST"), QStringLiteral("vantCookies"),
    QStringLiteral("MiPushUsingCookie")};
