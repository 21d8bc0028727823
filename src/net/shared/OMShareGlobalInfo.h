#pragma once

#include "net/shared/HttpCookieParam.h"

#include <QVariantMap>

class UserDefaults;

//! Keeps the session cookies' parameters beyond a restart. Made by whoever needs it; the settings
//! are not owned.
class OMShareGlobalInfo
{
public:
    explicit OMShareGlobalInfo(UserDefaults *defaults);

    //! In memory until saveHttpCookieParam(), or what loadHttpCookieParam() found.
    HttpCookieParam httpCookieParam;

    //! Reads the stored parameters; missing ones are null.
    void loadHttpCookieParam();
    //! Writes the parameters through to the settings.
    void saveHttpCookieParam() const;
    //! The parameters under their stored names; null ones are left out.
    QVariantMap dicHttpCookieParam() const;

private:
    UserDefaults *m_defaults;
};
