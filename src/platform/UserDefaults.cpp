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
        removeObjectForKey(key);
    else
        store(value, key);
}

void UserDefaults::setBool(bool value, const QString &key)
{
    store(value, key);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    if (m_settings.contains(key))
        m_settings.remove(key);
}

// What is there already leaves nothing to write: a write holds up the caller for as long as the
// disk takes.
void UserDefaults::store(const QVariant &value, const QString &key)
{
    const QVariant present = m_settings.value(key);
    // From the file, numbers and truth come as texts.
    const bool isSameText = present.metaType().id() == QMetaType::QString
        && value.canConvert<QString>() && present.toString() == value.toString();
    if (present != value && !isSameText)
        m_settings.setValue(key, value);
}

bool UserDefaults::synchronize()
{
    m_settings.sync();
    if (m_settings.status() == QSettings::NoError)
        return true;
    qCWarning(lcPlatform) << "settings could not be written to" << m_settings.fileName();
    return false;
}
