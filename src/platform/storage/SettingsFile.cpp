#include "platform/storage/SettingsFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 spareRoom = 16 * 1024; // in bytes, for what a change adds

}

SettingsFile::SettingsFile(const QString &filePath)
    : m_settings(filePath, QSettings::IniFormat)
{
    m_settings.setAtomicSyncRequired(true);
}

QVariant SettingsFile::value(const QString &key) const
{
    const auto changed = m_changes.constFind(key);
    return changed == m_changes.cend() ? m_settings.value(key) : *changed;
}

void SettingsFile::setValue(const QString &key, const QVariant &value)
{
    m_changes.insert(key, value);
}

void SettingsFile::remove(const QString &key)
{
    m_changes.remove(key);
    if (m_settings.contains(key))
        m_changes.insert(key, {});
}

bool SettingsFile::hasRoom() const
{
    QFile room(fileName() + QStringLiteral(".room"));
    const QByteArray content(2 * QFileInfo(fileName()).size() + spareRoom, '\0');
    const bool hasRoom = room.open(QIODevice::WriteOnly | QIODevice::Unbuffered,
                             QFile::ReadOwner | QFile::WriteOwner)
        && room.write(content) == content.size();
    room.remove();
    return hasRoom;
}

bool SettingsFile::synchronize()
{
    if (m_changes.isEmpty())
        return true;
    if (!hasRoom())
        return false;
    for (auto change = m_changes.cbegin(); change != m_changes.cend(); ++change) {
        if (change->isValid())
            m_settings.setValue(change.key(), *change);
        else
            m_settings.remove(change.key());
    }
    m_changes.clear();
    m_settings.sync();
    // One that could not be read is replaced, which is no failure.
    return m_settings.status() != QSettings::AccessError;
}
