#include "net/shared/OMShareUserInfo.h"

#include "platform/storage/UserDefaults.h"

namespace {

const QString user_idKey = QStringLiteral("user_id");
const QString userNameKey = QStringLiteral("userName");
const QString head_urlKey = QStringLiteral("head_url");
const QString userSexKey = QStringLiteral("userSex");
const QString myMovieCountKey = QStringLiteral("myMovieCount");
const QString theLastTimeKey = QStringLiteral("theLastTime");
const QString isLoginKey = QStringLiteral("isLogin");

}

OMShareUserInfo::OMShareUserInfo(UserDefaults *defaults)
    : m_defaults(defaults)
{
}

void OMShareUserInfo::store(const QString &key, const QVariant &value)
{
    m_defaults->setObject(value, key);
    m_defaults->synchronize();
}

QString OMShareUserInfo::user_id() const
{
    return m_defaults->stringForKey(user_idKey);
}

void OMShareUserInfo::setUser_id(const QString &value)
{
    store(user_idKey, value);
}

QString OMShareUserInfo::userName() const
{
    return m_defaults->stringForKey(userNameKey);
}

void OMShareUserInfo::setUserName(const QString &value)
{
    store(userNameKey, value);
}

QString OMShareUserInfo::head_url() const
{
    return m_defaults->stringForKey(head_urlKey);
}

void OMShareUserInfo::setHead_url(const QString &value)
{
    store(head_urlKey, value);
}

QString OMShareUserInfo::userSex() const
{
    return m_defaults->stringForKey(userSexKey);
}

void OMShareUserInfo::setUserSex(const QString &value)
{
    store(userSexKey, value);
}

int OMShareUserInfo::myMovieCount() const
{
    return m_defaults->objectForKey(myMovieCountKey).toInt();
}

void OMShareUserInfo::setMyMovieCount(int value)
{
    store(myMovieCountKey, value);
}

QString OMShareUserInfo::theLastTime() const
{
    return m_defaults->stringForKey(theLastTimeKey);
}

void OMShareUserInfo::setTheLastTime(const QString &value)
{
    store(theLastTimeKey, value);
}

bool OMShareUserInfo::isLogin() const
{
    return m_defaults->boolForKey(isLoginKey);
}

void OMShareUserInfo::setIsLogin(bool value)
{
    store(isLoginKey, value);
}
