#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

//! The per-application key-value store: everything small that survives a restart.
//!
//! One file of mode 0600. Whoever changes a value calls synchronize() after it; a file on disk is
//! always whole, the one before the change or the one after it, whenever the process is killed.
class UserDefaults
{
public:
    explicit UserDefaults(const QString &filePath);

    //! The stored value, or an invalid QVariant for a missing key.
    QVariant objectForKey(const QString &key) const;
    //! The stored string, or a null string for a missing key.
    QString stringForKey(const QString &key) const;
    //! The stored bool; a missing key reads false.
    bool boolForKey(const QString &key) const;

    //! Stores the value; an invalid value or a null string removes the key.
    void setObject(const QVariant &value, const QString &key);
    void setBool(bool value, const QString &key);
    void removeObjectForKey(const QString &key);

    //! Writes what has changed to disk; false when the disk refuses, which is logged.
    bool synchronize();

private:
    void store(const QVariant &value, const QString &key);

    QSettings m_settings;
};
