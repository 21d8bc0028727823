#pragma once

#include <QString>

#include <optional>

class UserDefaults;

//! The school that a WeChat login was asked for, whole and as it stood then: another may be chosen
//! while the browser is open. Kept in the settings, for the answer may start the program.
struct AskedSchool
{
    QString name;
    QString siteCode;
    QString provinces; //!< null on the screen that asks for none, as is the city
    QString city;
    bool isLocal = false; //!< the school runs a server of its own
    QString localUrl;
    QString localUrlQe;

    void keep(UserDefaults *defaults) const;
    //! What was kept; it is forgotten.
    static std::optional<AskedSchool> take(UserDefaults *defaults);

    bool operator==(const AskedSchool &) const = default;
};
