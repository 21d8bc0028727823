#include "platform/UserDefaults.h"

#include "platform/Logging.h"
#include "platform/PrivateFile.h"

UserDefaults::UserDefaults(const QString &filePath)
    : m_settings(filePath, QSettings::IniFormat)
{
    PrivateFile::prepareSettings(filePath);
    m_settings.setAtomicSyncRequired(true);
}

QVariant UserDefaults::objectForKey(const QString &key) const
{
    return m_settings.value(key);
}

QString UserDefaults::stringForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.isValid() ? value.toString() : QString();
}

bool UserDefaults::boolForKey(const QString &key) const
{
    return m_settings.value(key, false).toBool();
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    const bool isNil = !value.isValid()
        || (value.metaType().id() == QMetaType::QString && value.toString().isNull());
    if (isNil)
        m_settings.remove(key);
    else
        m_settings.setValue(key, value);
}

void UserDefaults::setBool(bool value, const QString &key)
{
    m_settings.setValue(key, value);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    m_settings.remove(key);
}

bool UserDefaults::synchronize()
{
    m_settings.sync();
    if (m_settings.status() == QSettings::NoError)
        return true;
    qCWarning(lcPlatform) << "settings could not be written to" << m_settings.fileName();
    return false;
}
