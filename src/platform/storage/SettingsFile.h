#pragma once

#include <QHash>
#include <QSettings>
#include <QString>
#include <QVariant>

//! A file of settings that is always whole: what changes is held until synchronize(), and written
//! only where the disk has room for it. By itself the toolkit would put an empty file in the place
//! of the old one when the disk is full. Main thread.
class SettingsFile
{
public:
    explicit SettingsFile(const QString &filePath);

    QString fileName() const { return m_settings.fileName(); }
    //! As it was set last; invalid when missing.
    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);

    //! Writes what has changed. False when the disk refuses: the file stands as it was, and what
    //! has changed is tried again with the next call.
    bool synchronize();

private:
    bool hasRoom() const;

    QSettings m_settings;
    QHash<QString, QVariant> m_changes; // not written yet; invalid: removed
};
