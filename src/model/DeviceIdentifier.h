#pragma once

#include "platform/storage/KeyChainStore.h"

#include <QObject>

#include <vector>

//! The identifier of this device: a UUID (36 characters, upper case) that is made once and kept in
//! the keychain. Read once at start; who needs it before the keychain has answered waits with
//! whenReady().
class DeviceIdentifier : public QObject
{
    Q_OBJECT

public:
    using Ready = std::function<void(const QString &uuid)>;

    //! \a key names the keychain item: the edition's bundle identifier.
    DeviceIdentifier(KeyChainStore *keychain, const QString &key);

    //! Reads the item, or makes and stores a new one when there is none, it is empty, or it cannot
    //! be read.
    void prepare();
    //! Calls back with the identifier, at once when it is known.
    void whenReady(Ready ready);
    //! The identifier, null until the keychain has answered.
    QString uuid() const { return m_uuid; }

private:
    QString unarchived(const QByteArray &data) const;
    void finish(const QString &uuid);

    KeyChainStore *m_keychain;
    QString m_key;
    QString m_uuid;
    std::vector<Ready> m_waiting;
};
