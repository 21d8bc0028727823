#pragma once

class HTTPCookieStorage;
class UserDefaults;

//! The session cookies "mo" and "tmo": kept under "vantCookies", so that the session outlives the
//! process. Names compare exactly; other cookies are never touched.
class SsoCookies
{
public:
    SsoCookies(HTTPCookieStorage *storage, UserDefaults *defaults);

    //! Saves the storage's session cookies, replacing the list, with an empty one too.
    void handleCookie();
    //! Puts the saved cookies back into the storage, unless it holds any session cookie already.
    void configCookies();
    //! Deletes the session cookies from the storage, and the saved list.
    void clearCookies();

private:
    HTTPCookieStorage *m_storage;
    UserDefaults *m_defaults;
};
