#pragma once

#include <QString>

class LoginModel;
class QJsonObject;
class RequestInterface;
class UserDefaults;

//! What a login screen knows of the chosen region; empty values leave what is stored.
struct ChosenRegion
{
    QString school;
    QString provinces;
    QString city;

    bool operator==(const ChosenRegion &) const = default;
};

//! Stores the answer of a login in the login record.
class LoginResult
{
public:
    enum class Refresh { No, Yes };

    LoginResult(LoginModel *loginModel, UserDefaults *defaults, RequestInterface *requests);

    //! Who an answer signs in, among all users of all sites; null where it does not say.
    QString userOf(const QJsonObject &data) const;

    //! The silent login's form: site, user and token; signs in only when it is a refresh.
    void handleLoginResult(const QJsonObject &data, Refresh refresh);
    //! The login screens' form: the redirect address and the chosen region too; signs in last.
    void handleLoginResult(const QJsonObject &data, const ChosenRegion &region);

private:
    enum class RedirectUrl { NotStored, Stored };

    void storeAnswer(const QJsonObject &data, RedirectUrl redirectUrl);

    LoginModel *m_loginModel;
    UserDefaults *m_defaults;
    RequestInterface *m_requests;
};
