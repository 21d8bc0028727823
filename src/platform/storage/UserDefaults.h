#pragma once

#include "platform/storage/SettingsFile.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class KeyChainStore;
class SealingKeys;

//! The per-application key-value store: everything small that survives a restart.
//!
//! One file of mode 0600. Whoever changes a value calls synchronize() after it; a file on disk is
//! always whole, the one before the change or the one after it, whenever the process is killed.
//!
//! Secrets are sealed in the file with a key of the keychain, each bound to the name it is stored
//! under; everything else, and empty texts, lies there in the clear. The keychain is asked once,
//! when the file is opened, for the keys that its values name. What becomes of a stored secret:
//!
//! - Its key is known: it reads as it was stored, or as missing when it does not open, and is
//!   replaced by the new value, sealed.
//! - Its key is awaited: it reads as missing and stays on disk, untouched. Replaced, it goes from
//!   disk, and the new value is held in memory.
//! - Its key cannot be had, for it is lost, or the keyring locked or failing: the same.
//!
//! A secret that is removed, or replaced by an empty text, goes from disk whatever its key does.
//! What is held reads as it was set, and is written as soon as there is a key to seal it with: one
//! that was awaited, or a new one when all have been answered and none is known. A key is in the
//! keychain before anything is sealed with it. What is replaced goes from disk before the new value
//! can be written, for it may be somebody else's session: a kill in between leaves neither.
//!
//! Values in the clear, of earlier versions, read at once, and stay until the same, sealed, takes
//! their place.
class UserDefaults
{
public:
    //! Without secrets.
    explicit UserDefaults(const QString &filePath);
    //! \a secrets: the settings that are sealed.
    UserDefaults(const QString &filePath, KeyChainStore *keychain, const QStringList &secrets);
    ~UserDefaults();

    //! The stored value, or an invalid QVariant for a missing key.
    QVariant objectForKey(const QString &key) const;
    //! The stored string, or a null string for a missing key.
    QString stringForKey(const QString &key) const;
    //! The stored bool; a missing key reads false.
    bool boolForKey(const QString &key) const;

    //! Whether a secret is stored that reads as missing because the keychain has not answered yet.
    bool isAwaited(const QString &key) const;
    //! Calls back once, as soon as no secret is awaited: at once when none is.
    void whenReadable(std::function<void()> readable);

    //! Stores the value; an invalid value or a null string removes the key.
    void setObject(const QVariant &value, const QString &key);
    void setBool(bool value, const QString &key);
    void removeObjectForKey(const QString &key);

    //! Writes what has changed to disk, but for what is held; false when the disk refuses, which is
    //! logged.
    bool synchronize();

private:
    void store(const QVariant &value, const QString &key);
    bool isSecret(const QVariant &value, const QString &key) const;
    void readSecrets();
    void keysAreSettled();
    void writeHeld();

    SettingsFile m_settings;
    QStringList m_secrets;
    std::unique_ptr<SealingKeys> m_keys;
    QHash<QString, QVariant> m_held;
    std::vector<std::function<void()>> m_waiting;
};
