#pragma once

#include <QByteArray>
#include <QObject>

#include <functional>
#include <optional>

class SettingsFile;

//! Small secrets in the user's keyring. Where no keyring service runs, a file of mode 0600 takes
//! its place, until an item of it is loaded with a service there, which then has it.
//!
//! Service and account of an item are both its key; a profile of its own gives its items names of
//! their own. All operations are asynchronous; completions arrive on the main thread.
class KeyChainStore : public QObject
{
    Q_OBJECT

public:
    using Loaded = std::function<void(std::optional<QByteArray> data)>;
    using Done = std::function<void(bool stored)>;

    //! Loads the service's library, which the first operation would wait for. Any thread.
    static void loadAhead();

    //! \a profileName: empty for the user's ordinary profile. \a fallbackFile: where items go
    //! without a service.
    KeyChainStore(const QString &profileName, const QString &fallbackFile);
    ~KeyChainStore() override;

    //! The item's data, or nothing when there is none or it cannot be read, which is logged.
    void load(const QString &key, Loaded loaded);
    //! Replaces the item.
    void save(const QString &key, const QByteArray &data, Done done = {});
    void deleteKeyData(const QString &key, Done done = {});

private:
    QString itemName(const QString &key) const;
    void moveToService(const QString &key, const QByteArray &data);
    void removeFromFile(const QString &key);

    QString m_profileName;
    std::unique_ptr<SettingsFile> m_fallback;
};
