#pragma once

#include <QString>

class QVariant;
class UserDefaults;

//! A few facts about the user, kept beside the login record and apart from it: its isLogin opens no
//! screen. Every value is read from the settings and written through at once; the settings are not
//! owned.
class OMShareUserInfo
{
public:
    explicit OMShareUserInfo(UserDefaults *defaults);

    QString user_id() const;
    void setUser_id(const QString &value);
    QString userName() const;
    void setUserName(const QString &value);
    QString head_url() const;
    void setHead_url(const QString &value);
    QString userSex() const;
    void setUserSex(const QString &value);
    int myMovieCount() const;
    void setMyMovieCount(int value);
    QString theLastTime() const;
    void setTheLastTime(const QString &value);
    bool isLogin() const;
    void setIsLogin(bool value);

private:
    void store(const QString &key, const QVariant &value);

    UserDefaults *m_defaults;
};
