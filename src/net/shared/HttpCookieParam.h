#pragma once

#include <QString>

//! The platform's session cookies as a login answer names them.
struct HttpCookieParam
{
    QString ssoCookie; //!< value of the single sign-on cookie
    QString sessionIdCookieName; //!< name of the session-id cookie
    QString ckClientId; //!< client-id cookie

    bool operator==(const HttpCookieParam &) const = default;
};
