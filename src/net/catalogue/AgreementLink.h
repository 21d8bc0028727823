#pragma once

#include <QString>

#include <optional>

class QJsonValue;

//! A link to an agreement, as screens show it; the platform names the page.
struct AgreementLink
{
    enum class Agreement { User, Privacy };

    Agreement agreement;
    QString title; //!< of the page

    //! Nothing for a link of another name than "protocol" or "privacy".
    static std::optional<AgreementLink> named(const QString &name);
    //! The page's address in the platform's answer; empty where it has none.
    static QString addressIn(const QJsonValue &answer);
    //! What the user is told then.
    static QString noAddressText();
};
